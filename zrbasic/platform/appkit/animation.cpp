#include <zrbasic/platform/appkit/animation.h>

#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <algorithm>
#include <cmath>

namespace zr {
namespace {

constexpr std::size_t sharesOfCurve = 16;
constexpr double mostPlaces = 100000;

double positiveOr(double value, double otherwise) {
    return std::isfinite(value) && value > 0 ? value : otherwise;
}

NSPoint between(NSPoint from, NSPoint to, double share) {
    return {from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
}

/// The place on the curve from `from`, `share` of the way along.
NSPoint onCurve(NSPoint from, const CGPathElement& curve, double share) {
    const NSPoint a = between(from, curve.points[0], share);
    const NSPoint b = between(curve.points[0], curve.points[1], share);
    const NSPoint c = between(curve.points[1], curve.points[2], share);
    return between(between(a, b, share), between(b, c, share), share);
}

/// The places of one run, in equal shares of its time.
std::vector<NSPoint> placesOf(const CGPath& path) {
    const std::vector<NSPoint> keys = path.keyPoints();
    const std::vector<CGPathElement>& elements = path.elements();
    const bool hasCurve = std::any_of(elements.begin(), elements.end(), [](const CGPathElement& element) {
        return element.type == kCGPathElementAddCurveToPoint;
    });
    if (!hasCurve || keys.empty()) {
        return keys;
    }
    std::vector<NSPoint> places{keys.front()};
    for (std::size_t i = 1; i < keys.size(); ++i) {
        for (std::size_t share = 1; share < sharesOfCurve; ++share) {
            const double part = static_cast<double>(share) / sharesOfCurve;
            places.push_back(elements[i].type == kCGPathElementAddCurveToPoint ? onCurve(keys[i - 1], elements[i], part)
                                                                               : between(keys[i - 1], keys[i], part));
        }
        places.push_back(keys[i]);
    }
    return places;
}

/// All runs, of which `run` is one, one after the other; empty where nothing leads on.
template <class Key>
std::vector<Key> repeated(const std::vector<Key>& run, double repeatCount) {
    if (run.size() < 2) {
        return {};
    }
    const std::size_t shares = run.size() - 1;
    const double wanted = std::round(static_cast<double>(shares) * positiveOr(repeatCount, 1));
    const auto total = static_cast<std::size_t>(std::clamp(wanted, 1.0, std::max(mostPlaces, double(shares))));
    std::vector<Key> keys(run.begin(), run.begin() + static_cast<std::ptrdiff_t>(std::min(shares, total) + 1));
    // The beginning is left out: where it is the end as well, that is where the run before has ended.
    while (keys.size() < total + 1) {
        keys.push_back(run[1 + (keys.size() - 1) % shares]);
    }
    return keys;
}

std::vector<double> numbersOf(const NSArray* values) {
    std::vector<double> numbers;
    if (!values) {
        return numbers;
    }
    for (const id& value : values->elements()) {
        const auto* const number = cast<NSNumber>(value);
        if (!number || !std::isfinite(number->doubleValue())) {
            return {};
        }
        numbers.push_back(number->doubleValue());
    }
    return numbers;
}

} // namespace

ZR_DEFINE_CLASS(CAAnimation) {
    is.method<&CAAnimation::duration>("duration");
    is.method<&CAAnimation::setDuration>("setDuration:");
    is.method<&CAAnimation::repeatCount>("repeatCount");
    is.method<&CAAnimation::setRepeatCount>("setRepeatCount:");
}

CAAnimation::CAAnimation() = default;
CAAnimation::~CAAnimation() = default;

ZR_DEFINE_CLASS(CAKeyframeAnimation) {
    is.classMethod<&CAKeyframeAnimation::animation>("animation");
    is.classMethod<&CAKeyframeAnimation::animationWithKeyPath>("animationWithKeyPath:");
    is.method<&CAKeyframeAnimation::keyPath>("keyPath");
    is.method<&CAKeyframeAnimation::setKeyPath>("setKeyPath:");
    is.method<&CAKeyframeAnimation::path>("path");
    is.method<&CAKeyframeAnimation::setPath>("setPath:");
    is.method<&CAKeyframeAnimation::values>("values");
    is.method<&CAKeyframeAnimation::setValues>("setValues:");
}

CAKeyframeAnimation::CAKeyframeAnimation() = default;
CAKeyframeAnimation::~CAKeyframeAnimation() = default;

Ref<CAKeyframeAnimation> CAKeyframeAnimation::animation() {
    return make<CAKeyframeAnimation>();
}

Ref<CAKeyframeAnimation> CAKeyframeAnimation::animationWithKeyPath(NSString* keyPath) {
    Ref<CAKeyframeAnimation> animation = make<CAKeyframeAnimation>();
    animation->setKeyPath(keyPath);
    return animation;
}

Ref<NSString> CAKeyframeAnimation::keyPath() const {
    return m_keyPath;
}

void CAKeyframeAnimation::setKeyPath(NSString* keyPath) {
    m_keyPath = keyPath ? Ref<NSString>(cast<NSString>(keyPath->copy())) : nullptr;
}

void CAKeyframeAnimation::setValues(NSArray* values) {
    m_values = values ? Ref<NSArray>(cast<NSArray>(values->copy())) : nullptr;
}

std::vector<NSPoint> CAKeyframeAnimation::placesToPass() const {
    return m_path ? repeated(placesOf(*m_path), repeatCount()) : std::vector<NSPoint>();
}

std::vector<double> CAKeyframeAnimation::numbersToPass() const {
    return m_path ? std::vector<double>() : repeated(numbersOf(m_values), repeatCount());
}

double CAKeyframeAnimation::totalDuration() const {
    const std::size_t keysOfRun = m_path ? placesOf(*m_path).size() : numbersOf(m_values).size();
    const std::size_t keys = m_path ? placesToPass().size() : numbersToPass().size();
    if (keysOfRun < 2) {
        return 0;
    }
    return positiveOr(duration(), 0) * static_cast<double>(keys - 1) / static_cast<double>(keysOfRun - 1);
}

} // namespace zr
