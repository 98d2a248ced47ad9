#pragma once

#include <zrbasic/platform/foundation/dictionary.h>

#include <cstddef>
#include <vector>

namespace zr::detail {

/// A stretch of text whose characters share one dictionary of attributes.
struct AttributeRun {
    /// One past the last code unit.
    NSUInteger end;
    /// Immutable, never null, shared by all runs that came from the same call.
    Ref<NSDictionary> attributes;
};

/// The attributes of a text, run by run. Covers every code unit, has no empty runs and, as long as the values in the
/// dictionaries stay as they are, no equal neighbours.
///
/// Places and ranges are not checked here. Nothing throws but `std::bad_alloc` and what the values' `isEqual` throws,
/// and then nothing has changed.
class AttributeRuns {
  public:
    [[nodiscard]] const std::vector<AttributeRun>& runs() const { return m_runs; }
    [[nodiscard]] NSUInteger length() const { return m_runs.empty() ? 0 : m_runs.back().end; }

    /// The number of the run that holds the code unit at `place`, which must be below the length.
    [[nodiscard]] std::size_t runAt(NSUInteger place) const;
    [[nodiscard]] NSRange rangeOfRun(std::size_t number) const {
        const NSUInteger start = startOfRun(number);
        return {start, m_runs[number].end - start};
    }
    /// The runs inside `range`, counted from its beginning.
    [[nodiscard]] AttributeRuns part(NSRange range) const;

    /// `length` more code units with these attributes.
    void append(NSUInteger length, Ref<NSDictionary> attributes);
    /// The runs of another text behind these.
    void append(const AttributeRuns& other);
    /// Puts the runs of `fresh` in place of those in `range`, which may differ from it in length. Gives back what was
    /// thrown out, to be let go when the caller's state is in order.
    [[nodiscard]] std::vector<AttributeRun> replace(NSRange range, AttributeRuns fresh);

  private:
    void makeRoom(std::size_t additions);
    [[nodiscard]] NSUInteger startOfRun(std::size_t number) const { return number == 0 ? 0 : m_runs[number - 1].end; }

    std::vector<AttributeRun> m_runs;
};

/// Whether two dictionaries hold equal entries; the same one does.
[[nodiscard]] inline bool isSame(NSDictionary* one, NSDictionary* other) {
    return one == other || one->isEqualToDictionary(other);
}

/// A dictionary of these attributes that nobody can change any more; null counts as none.
[[nodiscard]] Ref<NSDictionary> frozenAttributes(NSDictionary* attributes);

} // namespace zr::detail
