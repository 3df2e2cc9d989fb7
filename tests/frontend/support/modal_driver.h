// Plays the user in the modal dialogs that the pages open with a blocking
// exec(): the action runs on the first modal widget that shows up, from
// inside the dialog's own event loop.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <memory>

namespace zirvel_test {

class ModalDriver {
public:
    // Waits up to `timeoutMs` for a modal widget and runs `action` on it once.
    void Next(std::function<void(QWidget*)> action, int timeoutMs = 5000) {
        auto state = state_;
        state->handled = false;
        state->action = std::move(action);
        state->attemptsLeft = timeoutMs / kPollMs;
        Poll(state);
    }

    // Answers the next message box with `button`, keeping its title and text.
    void AnswerMessageBox(QMessageBox::StandardButton button) {
        Next([this, button](QWidget* widget) {
            auto* box = qobject_cast<QMessageBox*>(widget);
            if (!box) return;
            title_ = box->windowTitle();
            text_ = box->text();
            icon_ = box->icon();
            // A click, not done(): the static QMessageBox functions report
            // the clicked button, and done() alone leaves it unset (NoButton).
            if (QAbstractButton* answer = box->button(button)) answer->click();
            else box->done(button);
        });
    }

    bool Handled() const { return state_->handled; }
    QString Title() const { return title_; }
    QString Text() const { return text_; }
    QMessageBox::Icon Icon() const { return icon_; }

private:
    static constexpr int kPollMs = 10;
    struct State {
        std::function<void(QWidget*)> action;
        int attemptsLeft = 0;
        bool handled = false;
    };

    static void Poll(const std::shared_ptr<State>& state) {
        QTimer::singleShot(kPollMs, [state] {
            QWidget* modal = QApplication::activeModalWidget();
            if (modal && modal->isVisible()) {
                state->handled = true;
                auto action = std::move(state->action);
                state->action = nullptr;
                if (action) action(modal);
                return;
            }
            if (--state->attemptsLeft > 0) Poll(state);
        });
    }

    std::shared_ptr<State> state_ = std::make_shared<State>();
    QString title_;
    QString text_;
    QMessageBox::Icon icon_ = QMessageBox::NoIcon;
};

}  // namespace zirvel_test
