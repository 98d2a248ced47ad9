#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

namespace zr::test {

/// Handles events until `isDone`, for up to 5 seconds.
template <class Condition>
bool eventually(const Condition& isDone) {
    QElapsedTimer timer;
    timer.start();
    while (!isDone()) {
        if (timer.elapsed() > 5000) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

} // namespace zr::test
