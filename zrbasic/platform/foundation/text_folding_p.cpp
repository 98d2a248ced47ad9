#include <zrbasic/platform/foundation/text_folding_p.h>

#include <zrbasic/platform/foundation/text_search_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

#include <algorithm>

namespace zr::detail {

namespace {

const UNormalizer2* canonicalForm() {
    static const UNormalizer2* const instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        const UNormalizer2* found = unorm2_getNFDInstance(&status);
        return U_SUCCESS(status) ? found : nullptr;
    }();
    return instance;
}

const UNormalizer2* compatibilityForm() {
    static const UNormalizer2* const instance = [] {
        UErrorCode status = U_ZERO_ERROR;
        const UNormalizer2* found = unorm2_getNFKDInstance(&status);
        return U_SUCCESS(status) ? found : nullptr;
    }();
    return instance;
}

// True when `c` belongs to the sequence of the code point before it.
bool continuesSequence(char32_t c) {
    if (c < 0x0300) {
        return false;
    }
    if ((c >= 0x1160 && c <= 0x11FF) || (c >= 0xD7B0 && c <= 0xD7FB)) {
        return true;
    }
    if (c < 0x10000 && isPlainUnit(static_cast<char16_t>(c))) {
        return false;
    }
    return (U_GET_GC_MASK(static_cast<UChar32>(c)) & U_GC_M_MASK) != 0;
}

// Marks written above, below or across a letter go; those that make another letter (kana voicing, nukta, virama) stay.
bool isDiacritic(unsigned char combiningClass) {
    return combiningClass == 1 || combiningClass >= 10;
}

char32_t widthFolded(char32_t c) {
    if (c < 0xFF00 || c > 0xFFEF) {
        return c;
    }
    // The half-width sound marks stay apart from the combining ones: half-width "ga" is two characters.
    if (c == 0xFF9E || c == 0xFF9F || compatibilityForm() == nullptr) {
        return c;
    }
    UChar buffer[4];
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length =
        unorm2_getRawDecomposition(compatibilityForm(), static_cast<UChar32>(c), buffer, 4, &status);
    return U_SUCCESS(status) && length == 1 ? buffer[0] : c;
}

} // namespace

FoldedReader::FoldedReader(std::u16string_view text, unsigned options)
    : m_text(text),
      m_literal((options & literalSearch) != 0),
      m_foldsCase((options & caseInsensitiveSearch) != 0),
      m_foldsMarks((options & diacriticInsensitiveSearch) != 0),
      m_foldsWidth((options & widthInsensitiveSearch) != 0) {}

bool FoldedReader::fill() {
    // Folding may leave nothing of a sequence (a lone mark), hence the loop.
    do {
        if (m_position == m_text.size()) {
            return false;
        }
        readCluster();
    } while (m_cluster.empty());
    return true;
}

void FoldedReader::readCluster() {
    m_cluster.clear();
    m_next = 0;
    const std::size_t start = m_position;
    const char16_t first = m_text[start];
    // U+0080 to U+00BF are inert too, but the micro sign folds.
    const bool isPlainLetter = first < 0x80 || (first > 0xBF && isInertUnit(first));
    if (isPlainLetter && (m_literal || start + 1 == m_text.size() || isPlainUnit(m_text[start + 1]))) {
        const bool isUpper = m_foldsCase && first >= u'A' && first <= u'Z';
        m_position = start + 1;
        m_cluster.push_back({isUpper ? char32_t(first) + 0x20 : char32_t(first), start, m_position, true, true});
        return;
    }

    m_decomposed.clear();
    CodePoint c = codePointAt(m_text, m_position);
    if (m_literal) {
        m_position += c.length;
        m_decomposed.push_back({c.value, 0});
    } else {
        do {
            decompose(c.value);
            m_position += c.length;
            if (m_position == m_text.size()) {
                break;
            }
            c = codePointAt(m_text, m_position);
        } while (continuesSequence(c.value));
        // Canonical order: each run of marks by class, equal classes as written. A stable sort keeps a text of a
        // million marks affordable, which insertion would not.
        auto isStarter = [](const Decomposed& unit) { return unit.combiningClass == 0; };
        auto isMark = [](const Decomposed& unit) { return unit.combiningClass != 0; };
        auto runStart = std::find_if(m_decomposed.begin(), m_decomposed.end(), isMark);
        while (runStart != m_decomposed.end()) {
            const auto runEnd = std::find_if(runStart, m_decomposed.end(), isStarter);
            std::stable_sort(runStart, runEnd, [](const Decomposed& a, const Decomposed& b) {
                return a.combiningClass < b.combiningClass;
            });
            runStart = std::find_if(runEnd, m_decomposed.end(), isMark);
        }
    }
    for (const Decomposed& unit : m_decomposed) {
        appendFolded(unit);
    }
    for (FoldedUnit& unit : m_cluster) {
        unit.clusterStart = start;
        unit.clusterEnd = m_position;
    }
    if (!m_cluster.empty()) {
        m_cluster.front().isFirst = true;
        m_cluster.back().isLast = true;
    }
}

void FoldedReader::decompose(char32_t c) {
    const UNormalizer2* form = canonicalForm();
    if (form == nullptr || (c < 0x10000 && isInertUnit(static_cast<char16_t>(c)))) {
        m_decomposed.push_back({c, 0});
        return;
    }
    UChar buffer[32];
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length = unorm2_getDecomposition(form, static_cast<UChar32>(c), buffer, 32, &status);
    if (U_FAILURE(status) || length < 0) {
        m_decomposed.push_back({c, unorm2_getCombiningClass(form, static_cast<UChar32>(c))});
        return;
    }
    for (std::int32_t i = 0; i < length;) {
        UChar32 part;
        U16_NEXT(buffer, i, length, part);
        m_decomposed.push_back({static_cast<char32_t>(part), unorm2_getCombiningClass(form, part)});
    }
}

void FoldedReader::appendFolded(Decomposed c) {
    char32_t value = c.value;
    if (m_foldsMarks && isDiacritic(c.combiningClass)) {
        return;
    }
    if (m_foldsWidth) {
        value = widthFolded(value);
    }
    if (!m_foldsCase || value < u'A') {
        m_cluster.push_back({value, 0, 0, false, false});
        return;
    }
    // Full folding: "ß" reads as "ss", a ligature as its letters.
    UChar source[2];
    std::int32_t sourceLength = 0;
    U16_APPEND_UNSAFE(source, sourceLength, static_cast<UChar32>(value));
    UChar buffer[8];
    UErrorCode status = U_ZERO_ERROR;
    const std::int32_t length = u_strFoldCase(buffer, 8, source, sourceLength, U_FOLD_CASE_DEFAULT, &status);
    if (U_FAILURE(status)) {
        m_cluster.push_back({value, 0, 0, false, false});
        return;
    }
    for (std::int32_t i = 0; i < length;) {
        UChar32 part;
        U16_NEXT(buffer, i, length, part);
        m_cluster.push_back({static_cast<char32_t>(part), 0, 0, false, false});
    }
}

} // namespace zr::detail
