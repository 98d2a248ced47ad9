#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>

/// Parameters in the query or the fragment of a URL; for a single item, `NSURLComponents` is nearer at hand.
///
/// Keys and values may be of any kind and are written as the "%@" of a format writes them: strings as they are, numbers
/// in decimal, booleans as 1 and 0, the null object as "<null>". A lone surrogate becomes U+FFFD on the way.
///
/// A URL never changes; the operations give a new one. They read it by way of `NSURLComponents`, resolved against its
/// base, and give null when it has no components, as "http://a/?a[]=1" has none. A null receiver gives null. Nothing
/// here raises.
namespace zr {

class NSDictionary;
class NSMutableDictionary;
class NSMutableURLRequest;
class NSString;
class NSURL;

// NSDictionary(ZRXHelper)

/// The entries as "name=value", sorted by name, with "&" between them; "" for none.
///
/// Nothing is escaped: a value with a "&" in it reads back as two parameters. `NSURLComponents` escapes the text when
/// it is set. Of two keys that are written alike the later one's value stays. Upper case sorts first:
/// {b: 2, a: 1, C: 3} is "C=3&a=1&b=2".
[[nodiscard]] ZR_EXPORT Ref<NSString> URLQueryString(NSDictionary* self);

// NSURL(ZRXHelper)

/// The URL with the entries behind its query items, in the dictionary's order. The items that it has stay, those of the
/// same names too. The receiver itself when the dictionary is null or empty.
///
/// The whole query is written anew, and therefore escaped in one way: "a=%41&b=c=d" comes out as "a=A&b=c%3Dd".
[[nodiscard]] ZR_EXPORT Ref<NSURL> appendQueryItemsFromDictionary(NSURL* self, NSDictionary* parameters);

/// The URL with the dictionary's `URLQueryString` in place of its fragment; the query is left alone. The receiver
/// itself when the dictionary is null or empty.
[[nodiscard]] ZR_EXPORT Ref<NSURL> resetFragmentWithDictionary(NSURL* self, NSDictionary* parameters);

/// The URL with a fresh item "random" at the end of its query, a number of the whole unsigned 32-bit range, for
/// addresses that no cache shall know.
///
/// The first item of that name goes, and with it those that equal it; one with another value stays.
[[nodiscard]] ZR_EXPORT Ref<NSURL> resetRandomQueryItem(NSURL* self);

/// Both of the above. The receiver itself, with its old random item, when the dictionary is null or empty.
[[nodiscard]] ZR_EXPORT Ref<NSURL> resetRandomURLAndFragmentWithDictionary(NSURL* self, NSDictionary* parameters);

/// The parameters of any text of that form; the receiver only has to be there. Null for null and for "".
///
/// A piece between two "&" counts when there is exactly one "=" in it: "a=1&b&c=2=3&a=4" gives {a: 4}. Nothing is
/// decoded or trimmed, and later pieces win.
[[nodiscard]] ZR_EXPORT Ref<NSMutableDictionary> getParamsFromUrlContent(NSURL* self, NSString* content);

/// The same for the query, escapes included, as the URL holds it. Null when there is no query or an empty one, and for
/// a URL like "mailto:a@b?subject=x", of which `NSURL` knows no query.
[[nodiscard]] ZR_EXPORT Ref<NSDictionary> queryParams(NSURL* self);
/// The same for the fragment.
[[nodiscard]] ZR_EXPORT Ref<NSDictionary> fragmentParams(NSURL* self);

// NSMutableURLRequest(ZRXHelper)

/// Adds header fields, over those of exactly the same names. Of names that differ in case only the last one stays, and
/// entries that are not two strings are left out. Null and empty dictionaries do nothing.
ZR_EXPORT void appendHeaderFields(NSMutableURLRequest* self, NSDictionary* fields);

} // namespace zr
