#pragma once

#include <zrbasic/platform/runtime/function_ref.h>

#include <QObject>

/// The loop that hands out Qt's events and the main queue's callbacks. Main thread only.
namespace zr::qt {

/// Handles events until `isDone` says so, which is asked at first and after each time that something was handled.
///
/// Loops nest. What an event raises, where it is handed over by `duringEvent`, leaves the innermost loop and reaches
/// its caller; as it must not pass through Qt's own frames, the events that Qt has taken out with it are handled first.
void handleEventsUntil(FunctionRef<bool()> isDone);

/// Does what an event is to do. Every place where Qt calls objects of ours goes through here: what is raised is kept
/// for the innermost loop, which raises it again. Where none is running, as under the application's own
/// `QApplication::exec`, nobody could catch it: it is reported on the error output and dropped.
void duringEvent(FunctionRef<void()> work);

/// Has the main queue run by Qt's loops, whoever runs these, for as long as it stands.
class MainQueueDrainer final : public QObject {
  public:
    MainQueueDrainer();
    ~MainQueueDrainer() override;

    bool event(QEvent* event) override;

  private:
    void drain();

    int m_timer = 0;
};

} // namespace zr::qt
