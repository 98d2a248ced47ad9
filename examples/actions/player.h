#pragma once

#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/foundation/dictionary.h>

#include <QObject>

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace actions {

/// Plays a recorded list of what a user does with an application's windows, by the events that a mouse and a keyboard
/// make, and checks what the windows show then.
///
/// The list is a file of JSON objects, one on each line; blank lines and those that begin with "#" are passed over.
/// Views are named by their identifiers, those of the frontmost window first. What one line can say:
///
///     {"click": "buy"}                          in the middle of the view, or "at": [x, y] from its upper left corner;
///                                               "button": "right", "times": 2, or "to": [x, y] to drag it there
///     {"choose": "Up to a tick"}                that item of the menu that is open
///     {"type": "2241.78"}                       into whatever has the keyboard
///     {"key": "Tab", "with": "ctrl+shift"}      Tab, Return, Escape, Up, Down, Backspace or one character
///     {"expect": "price", "text": "2241.78"}    or "contains"; a button shows its title, a table those of its columns
///     {"expect": "dark", "on": true}            whether it is ticked
///     {"keyboard": "price"}                     expects that this view has it
///     {"absent": "dark"}                        expects that no window has such a view
///     {"wait": 0.2}                             seconds
///     {"picture": "desk.png"}                   of the window with the keyboard
///
/// What cannot be done yet, or is not yet as expected, is tried again for 5 seconds, or as many as "within" says.
class Player {
  public:
    /// With a fault, and nothing to play, when the file cannot be read.
    explicit Player(const std::string& file);

    /// Plays the list while the application runs, and calls `onEnd` at its end, or when something was not as expected.
    void start(std::function<void()> onEnd);
    /// What kept the list from being read, or played to its end, with file and line; empty for nothing.
    [[nodiscard]] std::string fault() const;

  private:
    using Clock = std::chrono::steady_clock;

    struct Action {
        std::size_t line;
        zr::Ref<zr::NSDictionary> what;
    };

    void scheduleStep();
    /// False at the end.
    bool step();
    [[nodiscard]] std::string play(zr::NSDictionary* what);

    std::vector<Action> m_actions;
    std::size_t m_next = 0;
    /// When the action after this one may be played, and when what is waited for is given up.
    Clock::time_point m_due;
    Clock::time_point m_deadline;
    /// What is still to come ends with the player.
    QObject m_context;
    std::function<void()> m_onEnd;
    bool m_isOver = false;
    std::string m_file;
    std::string m_fault;
};

} // namespace actions
