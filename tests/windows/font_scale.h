#pragma once

#include <QApplication>
#include <QFont>

namespace nimbry::test {

/// Letters of another size in all windows, as long as it lives.
class FontScale {
public:
    explicit FontScale(double factor) : usual_(QApplication::font()) {
        QFont larger = usual_;
        larger.setPointSizeF(usual_.pointSizeF() * factor);
        QApplication::setFont(larger);
    }
    ~FontScale() { QApplication::setFont(usual_); }
    FontScale(const FontScale&) = delete;
    FontScale& operator=(const FontScale&) = delete;

private:
    QFont usual_;
};

}  // namespace nimbry::test
