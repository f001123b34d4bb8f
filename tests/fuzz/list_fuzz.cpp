// List operations against a vector. Cursors are driven too; what they point at is checked where the model knows it.
#include <algorithm>
#include <vector>

#include "base/Error.h"
#include "base/List.h"
#include "fuzz/check.h"
#include "fuzz/input.h"
#include "fuzz/quiet_log.h"

namespace {

using namespace QxFontEffect;
using test::Input;

// Items are small numbers dressed as pointers, so that duplicates happen.
void* item(Input& input) {
    return reinterpret_cast<void*>(static_cast<uintptr_t>(1 + input.below(8)));
}

class Session {
public:
    Session() { mList.Construct(); }

    void step(Input& input) {
        switch (input.below(12)) {
            case 0:
                add(item(input));
                break;
            case 1:
                insert(item(input), input.take<int8_t>());
                break;
            case 2:
                removeItem(item(input));
                break;
            case 3:
                removeAt(input.take<int8_t>());
                break;
            case 4:
                removeRange(input.take<int8_t>(), input.take<int8_t>());
                break;
            case 5:
                checkGet(input.take<int8_t>());
                break;
            case 6:
                FUZZ_CHECK(mList.IsContained(item(input)) == 0 || !mModel.empty());
                break;
            case 7:
                checkIndex(item(input));
                break;
            case 8:
                begin();
                break;
            case 9:
                moveCursor(input);
                break;
            case 10:
                end(input);
                break;
            case 11:
                removeAll(input);
                break;
            default:
                break;
        }
        FUZZ_CHECK(mList.GetCount() == static_cast<int>(mModel.size()));
    }

    void finish() {
        for (size_t i = 0; i < mModel.size(); ++i) FUZZ_CHECK(mList.Get(static_cast<int>(i)) == mModel[i]);
        for (const long cursor : mCursors) mList.EndTraversal(cursor);
    }

private:
    int count() const { return static_cast<int>(mModel.size()); }

    void add(void* value) {
        FUZZ_CHECK(mList.Add(value));
        mModel.push_back(value);
    }

    void insert(void* value, int index) {
        const bool done = mList.Insert(value, index);
        FUZZ_CHECK(done == (index >= 0));
        if (done) mModel.insert(mModel.begin() + std::min(index, count()), value);
    }

    void removeItem(void* value) {
        FUZZ_CHECK(mList.Remove(value) == !mModel.empty());
        const auto found = std::find(mModel.begin(), mModel.end(), value);
        if (found != mModel.end()) mModel.erase(found);
    }

    void removeAt(int index) {
        const bool inside = index >= 0 && index < count();
        FUZZ_CHECK(mList.Remove(index) == inside);
        if (inside) mModel.erase(mModel.begin() + index);
    }

    void removeRange(int index, int number) {
        const bool accepted = index >= 0 && index < count() && number >= 0 && number <= count();
        const bool whole = accepted && index + number <= count();
        FUZZ_CHECK(mList.Remove(index, number) == whole);
        if (accepted) mModel.erase(mModel.begin() + index, mModel.begin() + std::min(index + number, count()));
    }

    void checkGet(int index) {
        const bool inside = index >= 0 && index < count();
        FUZZ_CHECK(mList.Get(index) == (inside ? mModel[static_cast<size_t>(index)] : nullptr));
    }

    void checkIndex(void* value) {
        const int index = mList.GetIndex(value);
        const bool present = std::find(mModel.begin(), mModel.end(), value) != mModel.end();
        FUZZ_CHECK((index >= 0) == present);
        if (present) FUZZ_CHECK(index < count() && mModel[static_cast<size_t>(index)] == value);
    }

    void begin() {
        const long cursor = mList.BeginTraversal();
        FUZZ_CHECK((cursor == -1) == (mCursors.size() == 10));
        if (cursor == -1) {
            FUZZ_CHECK(Error::GetError() == 2);
            return;
        }
        FUZZ_CHECK(mList.GetData(cursor) == (mModel.empty() ? nullptr : mModel.front()));
        mCursors.push_back(cursor);
    }

    long* pickCursor(Input& input) {
        return mCursors.empty() ? nullptr
                                : &mCursors[static_cast<size_t>(input.below(static_cast<int>(mCursors.size())))];
    }

    void moveCursor(Input& input) {
        const long* cursor = pickCursor(input);
        if (cursor == nullptr) return;
        switch (input.below(5)) {
            case 0:
                mList.NextData(*cursor);
                break;
            case 1:
                mList.PrevData(*cursor);
                break;
            case 2:
                mList.MoveFirst(*cursor);
                break;
            case 3:
                mList.MoveLast(*cursor);
                break;
            default: {
                const int index = input.take<int8_t>();
                const bool inside = index >= 0 && index < count();
                FUZZ_CHECK(mList.Move(*cursor, index) == inside);
                if (inside) FUZZ_CHECK(mList.GetData(*cursor) == mModel[static_cast<size_t>(index)]);
            }
        }
        void* const data = mList.GetData(*cursor);
        FUZZ_CHECK(data == nullptr || std::find(mModel.begin(), mModel.end(), data) != mModel.end());
    }

    void end(Input& input) {
        const long* cursor = pickCursor(input);
        if (cursor == nullptr) return;
        mList.EndTraversal(*cursor);
        mCursors.erase(mCursors.begin() + (cursor - mCursors.data()));
    }

    void removeAll(Input& input) {
        if (input.below(8) != 0) return;
        mList.RemoveAll();
        mModel.clear();
    }

    List mList;
    std::vector<void*> mModel;
    std::vector<long> mCursors;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    test::quietLog();
    Input input(data, size);
    Session session;
    while (!input.empty()) session.step(input);
    session.finish();
    return 0;
}
