#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QLineEdit>

#include "windows/help_window.h"

namespace nimbry::test {
namespace {

/// A key that is typed into the manual's search, which looks through all pages; the station waits meanwhile.
void search_the_manual(benchmark::State& run) {
    windows::HelpWindow window;
    window.show();
    QCoreApplication::processEvents();
    auto* find = window.findChild<QLineEdit*>(QStringLiteral("txtFind"));
    const QString texts[]{QStringLiteral("rai"), QStringLiteral("rain")};
    std::size_t n = 0;
    for (auto _ : run) {
        find->setText(texts[n++ % 2]);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(search_the_manual)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nimbry::test
