#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

struct UBreakIterator;

namespace qxhost {

/// Finds where a paragraph may end its lines.
class LineBreaker {
public:
    /// @param text  count UTF-16 units; must outlive the object.
    LineBreaker(const uint16_t* text, size_t count);
    ~LineBreaker();
    LineBreaker(const LineBreaker&) = delete;
    LineBreaker& operator=(const LineBreaker&) = delete;

    /// End of the line that starts at `start`: the furthest break opportunity at which the advances, trailing blanks
    /// aside, still fit into `width`; at least one user-perceived character.
    size_t lineEnd(size_t start, const std::vector<float>& advances, float width) const;

private:
    size_t fittingCharacters(size_t start, const std::vector<float>& advances, float width) const;

    const uint16_t* mText;
    size_t mCount;
    UBreakIterator* mLines;
    UBreakIterator* mCharacters;
};

/// Whether a line may end with this unit without its width counting.
bool isBlank(uint16_t unit);

}  // namespace qxhost
