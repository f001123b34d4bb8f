#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "harness/row.h"
#include "scene/core_scene.h"

namespace qxbench {

/// What a row of an effect is made of.
template <typename Record>
struct CoreWork {
    const char* effect;
    Record record;
    Ground ground;
    int workingMargin;  ///< pixels that the effect's own area reaches beyond the mask on every side
    void (*plain)(const Record&, const QxFontEffect::ParamPostProcessing&) = nullptr;
    std::function<Step(CoreScene&, const Record&)> peer = nullptr;
    double peerSlack = 4.0;
};

/// A row that runs one effect through its public interface on a mask.
template <typename Core, typename Record>
Row coreRow(const Mask& mask, const std::string& parameter, const CoreWork<Record>& work) {
    const int64_t margin = 2 * int64_t{work.workingMargin};
    Row row;
    row.effect = work.effect;
    row.mask = mask.name;
    row.parameter = parameter;
    row.pixels = mask.pixels();
    row.workingPixels = (mask.width + margin) * (mask.height + margin);
    row.make = [&mask, work] {
        struct Stage {
            Stage(const Mask& m, const CoreWork<Record>& w) : record(w.record) {
                core.setProperty(&record);
                scene = std::make_unique<CoreScene>(m, marginsOf(core), w.ground);
            }
            Core core;
            Record record;
            std::unique_ptr<CoreScene> scene;
        };
        const auto stage = std::make_shared<Stage>(mask, work);
        Case made;
        made.reset = [stage] { stage->scene->reset(); };
        made.ours = [stage] {
            QxFontEffect::ParamPostProcessing p = stage->scene->params();
            stage->core.doPostProcessing(&p);
        };
        if (work.plain != nullptr)
            made.plain = [stage, plain = work.plain] { plain(stage->record, stage->scene->params()); };
        if (work.peer) made.peer = work.peer(*stage->scene, stage->record);
        made.result = [stage] { return stage->scene->result(); };
        made.peerSlack = work.peerSlack;
        return made;
    };
    return row;
}

}  // namespace qxbench
