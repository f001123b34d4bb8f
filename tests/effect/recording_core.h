#pragma once

#include <cstdint>
#include <vector>

#include "effect/QxECoreBase.h"
#include "effect/QxEffect.h"
#include "support/allocation_pause.h"

namespace QxFontEffect::test {

/// What a recording core saw in one post-processing pass.
struct Pass {
    const QxECoreBase* core;
    ParamPostProcessing params;
    QxRect rect;
};

/// A core of any type number that notes its calls and paints nothing. Its record is borrowed.
class RecordingCore : public QxECoreBase {
public:
    RecordingCore(int type, QxProperty* borrowed, std::vector<Pass>* log = nullptr) : record(borrowed), passes(log) {
        style = static_cast<uint32_t>(type);
    }

    int initEffect(ParamInit* p) override {
        AllocationPause pause;
        inits.push_back(*p);
        return 1;
    }
    void render(ParamRender* p) override {
        AllocationPause pause;
        renders.push_back(*p);
    }
    void doPostProcessing(ParamPostProcessing* p) override {
        AllocationPause pause;
        if (passes != nullptr) passes->push_back({this, *p, *p->textRect});
    }
    void setProperty(QxProperty* p) override { record = p; }
    QxProperty* getProperty() override { return record; }
    int getLeftOffset() override { return margins[0]; }
    int getRightOffset() override { return margins[1]; }
    int getTopOffset() override { return margins[2]; }
    int getBottomOffset() override { return margins[3]; }

    QxProperty* record;
    std::vector<Pass>* passes;
    std::vector<ParamInit> inits;
    std::vector<ParamRender> renders;
    int margins[4] = {0, 0, 0, 0};
};

/// Puts a recording core into a stack, which owns it from then on.
inline RecordingCore* addRecorder(QxEffect& stack, int type, QxProperty* borrowed = nullptr,
                                  std::vector<Pass>* log = nullptr) {
    RecordingCore* core = new RecordingCore(type, borrowed, log);
    stack.effects.push_back(core);
    return core;
}

}  // namespace QxFontEffect::test
