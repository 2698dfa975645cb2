#pragma once

#include <QLabel>
#include <QLineEdit>
#include <functional>

#include "engine/core/weather_state.h"
#include "engine/setup/comment_dialog.h"
#include "windows/setup_dialog.h"

namespace nimbry::windows {

/// A comment editor (`NimbryComment`, `NimbryComment2`): one line of text with a count of its characters. `Command1`
/// empties it, `Command2` accepts.
class CommentWindow final : public SetupDialog {
    Q_OBJECT

public:
    /// `state` must outlive the window.
    CommentWindow(const WeatherState& state, Comment which, std::function<void(const CommentDialog&)> accepted,
                  QWidget* parent = nullptr);

protected:
    void load() override;
    void edited() override;
    bool commit() override;

private:
    const WeatherState& state_;
    Comment which_;
    std::function<void(const CommentDialog&)> accepted_;
    CommentDialog values_;
    QLineEdit line_;
    QLabel count_;
};

}  // namespace nimbry::windows
