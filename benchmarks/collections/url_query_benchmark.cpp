// Writing and reading the query of an order's address, beside what one would write by hand or take from uriparser.
//
// The parameters are twelve texts of 2 to 20 ASCII characters, one of which needs escapes. By hand they stand in a hash
// map of strings, are sorted for the query, and are read into such a map; uriparser wants its own list and gives one.

#include <zrbasic/collections/url_query.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <benchmark/benchmark.h>
#include <uriparser/Uri.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

using namespace zr;

using Parameters = std::unordered_map<std::string, std::string>;

const Parameters& parameters() {
    static const Parameters all = {
        {"symbol", "BTC-USDT"},
        {"side", "buy"},
        {"type", "limit"},
        {"price", "27431.50"},
        {"amount", "0.01250000"},
        {"client", "desk-0004711-20260302"},
        {"leverage", "10"},
        {"source", "web"},
        {"note", "take profit & stop"},
        {"lang", "zh-Hans-CN"},
        {"session", "5f2c9d81e07b44aa"},
        {"timestamp", "1772442000123"},
    };
    return all;
}

const std::string address = "https://trade.example.com/v1/orders";

Ref<NSDictionary> parameterDictionary() {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    for (const auto& [name, value] : parameters()) {
        entries->setObject_forKey(NSString::fromUtf8(value), NSString::fromUtf8(name));
    }
    return Ref<NSDictionary>(cast<NSDictionary>(entries->copy()));
}

struct UriList {
    std::vector<UriQueryListA> items;

    UriList() : items(parameters().size()) {
        std::size_t i = 0;
        for (const auto& [name, value] : parameters()) {
            items[i] = {name.c_str(), value.c_str(), i + 1 < items.size() ? &items[i + 1] : nullptr};
            ++i;
        }
    }
};

std::string joinedByHand() {
    std::vector<const Parameters::value_type*> sorted;
    sorted.reserve(parameters().size());
    for (const auto& parameter : parameters()) {
        sorted.push_back(&parameter);
    }
    std::sort(sorted.begin(), sorted.end(), [](const auto* a, const auto* b) { return a->first < b->first; });
    std::string query;
    for (const auto* const parameter : sorted) {
        if (!query.empty()) {
            query += '&';
        }
        query += parameter->first;
        query += '=';
        query += parameter->second;
    }
    return query;
}

void appendEscaped(std::string& to, std::string_view text) {
    for (const char c : text) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                             std::string_view("-._~").find(c) != std::string_view::npos;
        if (isPlain) {
            to += c;
        } else {
            constexpr char digits[] = "0123456789ABCDEF";
            to += '%';
            to += digits[static_cast<unsigned char>(c) / 16];
            to += digits[static_cast<unsigned char>(c) % 16];
        }
    }
}

std::string addressByHand() {
    std::string url = address;
    char separator = '?';
    for (const auto& [name, value] : parameters()) {
        url += separator;
        separator = '&';
        appendEscaped(url, name);
        url += '=';
        appendEscaped(url, value);
    }
    return url;
}

Parameters readByHand(const std::string& url) {
    Parameters read;
    const std::size_t start = url.find('?');
    std::string_view rest = std::string_view(url).substr(start + 1, url.find('#') - start - 1);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('&'), rest.size());
        const std::string_view piece = rest.substr(0, end);
        const std::size_t equals = piece.find('=');
        if (equals != std::string_view::npos && piece.rfind('=') == equals) {
            read[std::string(piece.substr(0, equals))] = piece.substr(equals + 1);
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return read;
}

/// Splits the address and puts it together again with a query, as one has to with uriparser.
std::string addressByUriparser() {
    const UriList list;
    std::string url;
    UriUriA uri;
    const char* error = nullptr;
    char* query = nullptr;
    if (uriParseSingleUriA(&uri, address.c_str(), &error) != URI_SUCCESS) {
        return url;
    }
    if (uriComposeQueryMallocExA(&query, list.items.data(), URI_FALSE, URI_FALSE) == URI_SUCCESS) {
        uri.query = {query, query + std::char_traits<char>::length(query)};
        int length = 0;
        if (uriToStringCharsRequiredA(&uri, &length) == URI_SUCCESS) {
            url.resize(static_cast<std::size_t>(length) + 1);
            static_cast<void>(uriToStringA(url.data(), &uri, length + 1, nullptr));
            url.pop_back();
        }
        std::free(query);
    }
    uriFreeUriMembersA(&uri);
    return url;
}

// The ways must agree, or their times mean nothing.
bool agree() {
    const Ref<NSDictionary> entries = parameterDictionary();
    const Ref<NSURL> url = appendQueryItemsFromDictionary(NSURL::URLWithString(NSString::fromUtf8(address)), entries);
    const Ref<NSDictionary> read = queryParams(url);
    const auto readOtherwise = readByHand(addressByHand());
    bool same = URLQueryString(entries)->utf8() == joinedByHand() && url->absoluteString()->utf8() == addressByHand() &&
                addressByHand() == addressByUriparser() && read->count() == readOtherwise.size();
    for (const auto& [name, value] : readOtherwise) {
        const auto* const own = cast<NSString>(read->peek(NSString::fromUtf8(name)));
        same = same && own != nullptr && own->utf8() == value;
    }
    return same;
}

template <class Work>
void run(benchmark::State& state, Work work) {
    if (!agree()) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto _ : state) {
        benchmark::DoNotOptimize(work());
    }
}

void queryOurs(benchmark::State& state) {
    const Ref<NSDictionary> entries = parameterDictionary();
    run(state, [&] { return URLQueryString(entries); });
}
BENCHMARK(queryOurs);

void queryByHand(benchmark::State& state) {
    run(state, joinedByHand);
}
BENCHMARK(queryByHand);

void queryUriparser(benchmark::State& state) {
    run(state, [] {
        const UriList list;
        char* query = nullptr;
        static_cast<void>(uriComposeQueryMallocExA(&query, list.items.data(), URI_FALSE, URI_FALSE));
        std::free(query);
        return query != nullptr;
    });
}
BENCHMARK(queryUriparser);

void addressOurs(benchmark::State& state) {
    const Ref<NSDictionary> entries = parameterDictionary();
    const Ref<NSURL> url = NSURL::URLWithString(NSString::fromUtf8(address));
    run(state, [&] { return appendQueryItemsFromDictionary(url, entries); });
}
BENCHMARK(addressOurs);

void addressByHandRun(benchmark::State& state) {
    run(state, addressByHand);
}
BENCHMARK(addressByHandRun)->Name("addressByHand");

void addressUriparser(benchmark::State& state) {
    run(state, addressByUriparser);
}
BENCHMARK(addressUriparser);

void randomOurs(benchmark::State& state) {
    const Ref<NSURL> plain = NSURL::URLWithString(NSString::fromUtf8(address));
    const Ref<NSURL> url = resetRandomQueryItem(appendQueryItemsFromDictionary(plain, parameterDictionary()));
    run(state, [&] { return resetRandomQueryItem(url); });
}
BENCHMARK(randomOurs);

void readOurs(benchmark::State& state) {
    const Ref<NSURL> url = NSURL::URLWithString(NSString::fromUtf8(addressByHand() + "#top"));
    run(state, [&] { return queryParams(url); });
}
BENCHMARK(readOurs);

void readByHandRun(benchmark::State& state) {
    const std::string url = addressByHand() + "#top";
    run(state, [&] { return readByHand(url); });
}
BENCHMARK(readByHandRun)->Name("readByHand");

void readUriparser(benchmark::State& state) {
    const std::string url = addressByHand() + "#top";
    run(state, [&] {
        const std::size_t start = url.find('?') + 1;
        UriQueryListA* list = nullptr;
        int count = 0;
        static_cast<void>(uriDissectQueryMallocA(&list, &count, url.data() + start, url.data() + url.find('#')));
        uriFreeQueryListA(list);
        return count;
    });
}
BENCHMARK(readUriparser);

} // namespace
