#include <zrbasic/platform/foundation/thread.h>

#if defined(__APPLE__)
#include <pthread.h>
#else
#include <unistd.h>
#endif

namespace zr {

ZR_DEFINE_CLASS(NSThread) {
    is.classMethod<&NSThread::isMainThread>("isMainThread");
}

NSThread::~NSThread() = default;

bool NSThread::isMainThread() {
    // Asked every time: the one thread of a forked child is its main thread, whatever it was before.
#if defined(__APPLE__)
    return pthread_main_np() != 0;
#else
    return getpid() == gettid();
#endif
}

} // namespace zr
