#pragma once

#include <QMessageBox>
#include <string>

#include "engine/ports/notices.h"

namespace nimbry::windows {

/// A message box of the program. It is shown like any window and never waits; answer() tells once it has
/// finished(). Closing it in any way but a button gives the safe answer: ok, no, cancel.
class MessageDialog : public QMessageBox {
    Q_OBJECT

public:
    explicit MessageDialog(const MessageBox& message, QWidget* parent = nullptr);

    /// What was answered; meaningful once it has finished().
    [[nodiscard]] Answer answer() const { return answer_; }

private:
    void add_buttons(Choices choices);
    void show_detail(const std::string& detail);

    QAbstractButton* other_ = nullptr;  ///< the choice beside those of the box
    Answer answer_ = Answer::ok;
};

}  // namespace nimbry::windows
