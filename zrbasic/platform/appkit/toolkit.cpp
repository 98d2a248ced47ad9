#include <zrbasic/platform/appkit/toolkit.h>

#include <zrbasic/platform/foundation/dispatch_queue.h>

#include <atomic>

namespace zr {
namespace {

std::atomic<Toolkit*> toolkitInUse{nullptr};

} // namespace

Toolkit::~Toolkit() = default;

double Toolkit::heightOfText(NSAttributedString*, double, double) {
    return 0;
}

std::vector<ScreenState> Toolkit::screens() {
    return {};
}

void Toolkit::runLoopUntil(FunctionRef<bool()> isDone) {
    runMainQueueUntil(DISPATCH_TIME_FOREVER, isDone);
}

NotificationService* Toolkit::notificationService() {
    return nullptr;
}

Toolkit& currentToolkit() {
    static Toolkit& none = *new Toolkit;
    Toolkit* const toolkit = toolkitInUse.load(std::memory_order_acquire);
    return toolkit != nullptr ? *toolkit : none;
}

Toolkit* setCurrentToolkit(Toolkit* toolkit) {
    return toolkitInUse.exchange(toolkit, std::memory_order_acq_rel);
}

} // namespace zr
