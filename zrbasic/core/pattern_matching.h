#pragma once

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/function_ref.h>

/// Finding, extracting and replacing text by pattern, where one call says it all. For a pattern with options, or for
/// the places of its groups, use `NSRegularExpression`.
///
/// Patterns have ICU's syntax. An invalid or null pattern is never reported: it matches nothing. Every search carries
/// a work limit, so none hangs, whatever the pattern; one that was cut off has no match. A null receiver gives the
/// zero result. Unless stated otherwise, nothing throws but `std::bad_alloc` and what a callback throws.
namespace zr {

class NSMutableString;
class NSTextCheckingResult;

// NSString(ZRXHelper)

/// The first match, letter case included; null when there is none.
[[nodiscard]] ZR_EXPORT Ref<NSString> matchResultWithPattern(NSString* self, NSString* pattern);

/// All matches in order, as strings, whatever the letter case; empty when there is none.
[[nodiscard]] ZR_EXPORT Ref<NSArray> matchResultsWithPattern(NSString* self, NSString* pattern);

/// Calls `result` once a match, in order and whatever the letter case, with the texts of the match and its groups.
///
/// A group that took no part is left out, so later groups move forward: for `(a)|(b)` each array has two elements.
/// The receiver's own lock is held until the last call has returned; the callback may take it again. It may change
/// the receiver too: all texts are those of the beginning. An empty callback is never called.
ZR_EXPORT void matchWithPattern_matchResult(NSString* self, NSString* pattern, FunctionRef<void(NSArray*)> result);

/// The arrays that `matchWithPattern_matchResult` would hand out, in order.
[[nodiscard]] ZR_EXPORT Ref<NSArray> matchSubResultsWithPattern(NSString* self, NSString* pattern);

/// Whether the whole receiver matches, letter case included: "123" and a line feed does not match `^\d+$`.
[[nodiscard]] ZR_EXPORT bool isLegalObjectWithPattern(NSString* self, NSString* pattern);

/// Every match, whatever its letter case, replaced by `replacement`, a template: "$1" stands for the first group.
///
/// The receiver itself when pattern or template is null or the pattern is invalid.
[[nodiscard]] ZR_EXPORT Ref<NSString> stringByReplacingWithPattern_withString(NSString* self, NSString* pattern,
                                                                              NSString* replacement);

/// Gives the replacement for one match: `working` is the text as replaced so far, from the end; `match` holds the
/// ranges, which are right in `working` as well; set `stop` to leave the matches before this one as they are. Null
/// replaces with nothing.
using ZRXReplaceBlock = FunctionRef<Ref<NSString>(NSMutableString* working, NSTextCheckingResult* match, bool& stop)>;

/// Every match, whatever its letter case, replaced by what the callback returns, from the last match to the first.
///
/// The receiver itself when nothing matches, the pattern is invalid or the callback is empty. Raises
/// `NSRangeException` when a callback shortens `working` so much that a match no longer lies in it.
[[nodiscard]] ZR_EXPORT Ref<NSString> stringByReplacingWithPattern_replaceBlock(NSString* self, NSString* pattern,
                                                                                ZRXReplaceBlock replacement);

/// Compares the first matches of the pattern in both strings when both are there and not empty, else the strings
/// themselves.
///
/// The comparison is that of texts, so a match "10" comes before "9". Everything comes after null; without a pattern
/// the strings are compared.
[[nodiscard]] ZR_EXPORT NSComparisonResult compare_usingRegularExpression(NSString* self, NSString* other,
                                                                          NSString* pattern);

} // namespace zr
