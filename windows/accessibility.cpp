#include "windows/accessibility.h"

#include <QAccessibleWidget>

#include "windows/card_group.h"
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

QAccessibleInterface* make_interface(const QString&, QObject* object) {
    if (auto* box = qobject_cast<ValueBox*>(object)) return new ValueBoxAccessible(box);
    if (auto* group = qobject_cast<CardGroup*>(object)) return new QAccessibleWidget(group, QAccessible::Grouping);
    return nullptr;
}

}  // namespace

void install_accessibility() {
    QAccessible::installFactory(make_interface);
}

}  // namespace nimbry::windows
