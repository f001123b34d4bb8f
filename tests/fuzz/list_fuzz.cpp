// List operations, cursors among them, against the model of the unit tests.
#include "base/list_model.h"
#include "fuzz/check.h"
#include "fuzz/input.h"
#include "fuzz/quiet_log.h"

namespace {

using namespace QxFontEffect;

/// An input as the model asks for numbers. Indices may be far outside the list.
class InputNumbers {
public:
    explicit InputNumbers(test::Input& input) : mInput(input) {}
    int below(int limit) { return mInput.below(limit); }
    int between(int, int) { return mInput.take<int8_t>(); }
    bool oneIn(int n) { return below(n) == 0; }

private:
    test::Input& mInput;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    test::quietLog();
    test::Input input(data, size);
    InputNumbers numbers(input);
    test::ListAgainstModel<InputNumbers> pair(numbers);
    while (!input.empty()) {
        pair.operate();
        pair.check();
        FUZZ_CHECK(pair.fault() == nullptr);
    }
    return 0;
}
