#pragma once

#include <gtest/gtest.h>
#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <QWidget>

#include <cstdlib>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/pseudo_terminal.h"

// What the tests of the running program need: somebody who looks on while its event loop runs, and a station.

namespace nimbry::test {

/// The window of this kind that shows; nullptr when none does.
template <class Window>
[[nodiscard]] Window* visible_window() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (auto* window = qobject_cast<Window*>(widget); window != nullptr && window->isVisible()) return window;
    }
    return nullptr;
}

/// Looks on while the program's own event loop runs: each step waits for its condition, then acts.
class Onlooker : public QObject {
public:
    Onlooker() {
        connect(&look_, &QTimer::timeout, this, [this] {
            if (next_ < steps_.size() && steps_[next_].condition()) steps_[next_++].act();
        });
        look_.start(5);
    }
    void when(std::function<bool()> condition, std::function<void()> act) {
        steps_.push_back({std::move(condition), std::move(act)});
    }
    [[nodiscard]] bool saw_all() const { return next_ == steps_.size(); }

private:
    struct Step {
        std::function<bool()> condition;
        std::function<void()> act;
    };
    std::vector<Step> steps_;
    std::size_t next_ = 0;
    QTimer look_;
};

/// The folder of a copy that has run before.
struct Folder : QTemporaryDir {
    Folder() {
        QFile ini(filePath(QStringLiteral("Nimbry.ini")));
        EXPECT_TRUE(ini.open(QIODevice::WriteOnly));
        ini.write("[Main]\r\nHasRun=True\r\n");
    }
};

[[nodiscard]] inline std::string contents(const QTemporaryDir& folder, const char* name) {
    QFile file(folder.filePath(QString::fromLatin1(name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

}  // namespace nimbry::test
