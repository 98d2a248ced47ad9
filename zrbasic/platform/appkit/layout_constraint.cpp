#include <zrbasic/platform/appkit/layout_constraint.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/exception.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <vector>

namespace zr {
namespace {

struct Limit {
    NSLayoutRelation relation = NSLayoutRelationEqual;
    double constant = 0;
    NSLayoutPriority priority = NSLayoutPriorityRequired;
};

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

bool isLetter(char16_t unit) {
    return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
}

/// Reads a format from left to right.
class FormatReader {
  public:
    FormatReader(NSString& format, NSDictionary* metrics) : m_rest(format.view()), m_metrics(metrics) {}

    bool take(std::u16string_view token) {
        while (!m_rest.empty() && m_rest.front() == u' ') {
            m_rest.remove_prefix(1);
        }
        if (!m_rest.starts_with(token)) {
            return false;
        }
        m_rest.remove_prefix(token.size());
        return true;
    }

    void require(std::u16string_view token, std::string_view complaint) {
        if (!take(token)) {
            fail(complaint);
        }
    }

    Ref<NSString> name() {
        take(u"");
        std::size_t length = 0;
        while (length < m_rest.size() && (isLetter(m_rest[length]) || (length > 0 && isDigit(m_rest[length])))) {
            ++length;
        }
        if (length == 0) {
            fail("a name is missing");
        }
        return NSString::fromUtf16(taken(length));
    }

    Limit limit() {
        Limit limit;
        if (take(u">=")) {
            limit.relation = NSLayoutRelationGreaterThanOrEqual;
        } else if (take(u"<=")) {
            limit.relation = NSLayoutRelationLessThanOrEqual;
        } else {
            take(u"==");
        }
        limit.constant = number();
        if (take(u"@")) {
            const double priority = number();
            if (!(priority > 0 && priority <= NSLayoutPriorityRequired)) {
                fail("a priority lies above 0 and up to 1000");
            }
            limit.priority = static_cast<NSLayoutPriority>(priority);
        }
        return limit;
    }

    [[nodiscard]] bool isAtEnd() {
        take(u"");
        return m_rest.empty();
    }

    [[noreturn]] static void fail(std::string_view complaint) {
        NSException::raise(NSInvalidArgumentException, std::string("the visual format cannot be used: ") += complaint);
    }

  private:
    /// A number, or a metric's name.
    double number() {
        take(u"");
        std::size_t length = 0;
        while (length < m_rest.size() && (isDigit(m_rest[length]) || m_rest[length] == u'.')) {
            ++length;
        }
        if (length == 0) {
            return metric();
        }
        const std::u16string_view digits = m_rest.substr(0, length);
        if (std::count(digits.begin(), digits.end(), u'.') > 1 || length == std::size_t{digits.front() == u'.'}) {
            fail("a number is malformed");
        }
        return finite(NSString::fromUtf16(taken(length))->doubleValue());
    }

    double metric() {
        const Ref<NSString> name = this->name();
        const auto* const value = cast<NSNumber>(m_metrics ? m_metrics->peek(name) : nullptr);
        if (!value) {
            fail("no metric has the name " + name->utf8());
        }
        return finite(value->doubleValue());
    }

    static double finite(double number) {
        if (!std::isfinite(number)) {
            fail("a number is not finite");
        }
        return number;
    }

    std::u16string_view taken(std::size_t length) {
        const std::u16string_view front = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return front;
    }

    std::u16string_view m_rest;
    NSDictionary* m_metrics;
};

/// Brings `minimum` and `maximum` nearer to each other as far as the constraint asks and they allow.
void narrow(const NSLayoutConstraint& constraint, double& minimum, double& maximum) {
    const double possible = std::clamp(constraint.constant(), minimum, maximum);
    if (constraint.relation() != NSLayoutRelationLessThanOrEqual) {
        minimum = possible;
    }
    if (constraint.relation() != NSLayoutRelationGreaterThanOrEqual) {
        maximum = possible;
    }
}

} // namespace

ZR_DEFINE_CLASS(NSLayoutConstraint) {
    is.classMethod<&NSLayoutConstraint::constraintsWithVisualFormat_options_metrics_views>(
        "constraintsWithVisualFormat:options:metrics:views:");
    is.method<&NSLayoutConstraint::firstItem>("firstItem");
    is.method<&NSLayoutConstraint::firstAttribute>("firstAttribute");
    is.method<&NSLayoutConstraint::relation>("relation");
    is.method<&NSLayoutConstraint::constant>("constant");
    is.method<&NSLayoutConstraint::priority>("priority");
}

NSLayoutConstraint::NSLayoutConstraint() = default;
NSLayoutConstraint::~NSLayoutConstraint() = default;

Ref<NSArray> NSLayoutConstraint::constraintsWithVisualFormat_options_metrics_views(NSString* format, NSUInteger,
                                                                                   NSDictionary* metrics,
                                                                                   NSDictionary* views) {
    if (!format) {
        FormatReader::fail("there is none");
    }
    FormatReader reader(*format, metrics);
    const bool isVertical = reader.take(u"V:");
    if (!isVertical) {
        reader.take(u"H:");
    }
    reader.require(u"[", "\"[\" is missing");
    const Ref<NSString> name = reader.name();
    auto* const view = cast<NSView>(views ? views->peek(name) : nullptr);
    if (!view) {
        FormatReader::fail("no view has the name " + name->utf8());
    }
    std::vector<id> constraints;
    if (reader.take(u"(")) {
        do {
            const Limit limit = reader.limit();
            const Ref<NSLayoutConstraint> constraint = make<NSLayoutConstraint>();
            constraint->m_view = Weak<NSView>(view);
            constraint->m_attribute = isVertical ? NSLayoutAttributeHeight : NSLayoutAttributeWidth;
            constraint->m_relation = limit.relation;
            constraint->m_constant = limit.constant;
            constraint->m_priority = limit.priority;
            constraints.push_back(constraint);
        } while (reader.take(u","));
        reader.require(u")", "\")\" is missing");
    }
    reader.require(u"]", "\"]\" is missing");
    if (!reader.isAtEnd()) {
        FormatReader::fail("something follows the view");
    }
    return NSArray::fromElements(std::move(constraints));
}

SizeLimits sizeLimitsOf(NSView& view) {
    std::vector<Ref<NSLayoutConstraint>> constraints;
    for (Ref<NSView> owner(&view); owner; owner = owner->superview()) {
        const Ref<NSArray> owned = owner->constraints();
        for (const id& element : owned->elements()) {
            auto* const constraint = cast<NSLayoutConstraint>(element);
            if (constraint && constraint->firstItem() == &view) {
                constraints.push_back(Ref<NSLayoutConstraint>(constraint));
            }
        }
    }
    std::stable_sort(constraints.begin(), constraints.end(),
                     [](const Ref<NSLayoutConstraint>& left, const Ref<NSLayoutConstraint>& right) {
                         return left->priority() > right->priority();
                     });
    SizeLimits limits;
    for (const Ref<NSLayoutConstraint>& constraint : constraints) {
        if (constraint->firstAttribute() == NSLayoutAttributeHeight) {
            narrow(*constraint, limits.minHeight, limits.maxHeight);
        } else {
            narrow(*constraint, limits.minWidth, limits.maxWidth);
        }
    }
    return limits;
}

} // namespace zr
