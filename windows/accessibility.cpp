#include "windows/accessibility.h"

#include <QAccessibleWidget>

#include "windows/card_group.h"
#include "windows/link_label.h"
#include "windows/setting_bar.h"
#include "windows/value_box.h"

namespace nimbry::windows {
namespace {

class ValueBoxAccessible : public QAccessibleWidget {
public:
    explicit ValueBoxAccessible(ValueBox* box) : QAccessibleWidget(box, QAccessible::EditableText), box_(box) {}

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? box_->text().trimmed() : QAccessibleWidget::text(kind);
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.readOnly = true;
        return state;
    }

private:
    ValueBox* box_;
};

/// Tells the number that the bar stands for; Qt's own tells the steps.
class SettingBarAccessible : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit SettingBarAccessible(SettingBar* bar) : QAccessibleWidget(bar, QAccessible::ScrollBar), bar_(bar) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface) return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QVariant currentValue() const override { return number(bar_->value()); }
    void setCurrentValue(const QVariant& value) override {
        bar_->setValue(qRound(value.toDouble() * bar_->steps_per_unit()));
    }
    [[nodiscard]] QVariant minimumValue() const override { return number(bar_->minimum()); }
    [[nodiscard]] QVariant maximumValue() const override { return number(bar_->maximum()); }
    [[nodiscard]] QVariant minimumStepSize() const override { return number(1); }

private:
    [[nodiscard]] double number(int steps) const { return static_cast<double>(steps) / bar_->steps_per_unit(); }

    SettingBar* bar_;
};

QAccessibleInterface* make_interface(const QString&, QObject* object) {
    if (auto* box = qobject_cast<ValueBox*>(object)) return new ValueBoxAccessible(box);
    if (auto* bar = qobject_cast<SettingBar*>(object)) return new SettingBarAccessible(bar);
    if (auto* group = qobject_cast<CardGroup*>(object)) return new QAccessibleWidget(group, QAccessible::Grouping);
    if (auto* link = qobject_cast<LinkLabel*>(object))
        return new QAccessibleWidget(link, QAccessible::Link, link->text());
    return nullptr;
}

}  // namespace

void install_accessibility() {
    QAccessible::installFactory(make_interface);
}

void announce(QWidget& widget) {
    QAccessibleEvent alert(&widget, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

}  // namespace nimbry::windows
