#include <memory>

#include "peers/peers.h"
#include "pixel/QxBlender.h"
#include "plain/plain.h"
#include "rows/rows.h"
#include "scene/blend_scene.h"

namespace qxbench {

using namespace QxFontEffect;

namespace {

using Scene = std::shared_ptr<BlendScene>;

Case caseOf(const Scene& scene) {
    Case work;
    work.reset = [scene] { scene->reset(); };
    work.result = [scene] { return scene->result(); };
    return work;
}

Row maskRow(const char* name, const Mask& mask, int mode, plain::MaskBlend plainBlend) {
    return {name, mask.name, "", mask.pixels(), [&mask, mode, plainBlend] {
                const Scene scene = std::make_shared<BlendScene>(mask);
                Case work = caseOf(scene);
                work.ours = [scene, mode] {
                    QxBlender::drawBitmapBlend8(0, 0, &scene->output, scene->maskBytes(), scene->width, scene->height,
                                                scene->width, kBlendColor, mode);
                };
                work.plain = [scene, plainBlend] {
                    plainBlend(scene->maskBytes(), kBlendColor, scene->output.pixels, scene->pixels());
                };
                if (mode == QXE_BLEND_SRC_OVER || mode == QXE_BLEND_DST_OVER)
                    work.peer = peers::blendMask(
                        mode == QXE_BLEND_SRC_OVER ? peers::Operator::SrcOver : peers::Operator::DstOver,
                        scene->maskPlane(), kBlendColor, scene->output.pixels);
                return work;
            }};
}

Row pictureRow(const char* name, const Mask& mask, int mode, plain::PixelBlend plainBlend) {
    return {name, mask.name, "", mask.pixels(), [&mask, mode, plainBlend] {
                const Scene scene = std::make_shared<BlendScene>(mask);
                Case work = caseOf(scene);
                work.ours = [scene, mode] {
                    QxBlender::drawBitmapBlend32(0, 0, &scene->output, scene->colors.data(), scene->width,
                                                 scene->height, scene->width, mode);
                };
                work.plain = [scene, plainBlend] {
                    plainBlend(reinterpret_cast<const uint8_t*>(scene->colors.data()), scene->output.pixels,
                               scene->pixels());
                };
                work.peer = peers::blendPicture(
                    mode == QXE_BLEND_SRC_OVER ? peers::Operator::SrcOver : peers::Operator::DstOver,
                    scene->colorPlane(), scene->output.pixels);
                return work;
            }};
}

Row byteImageRow(const Mask& mask) {
    return {"blend bytes dst-over", mask.name, "", mask.pixels(), [&mask] {
                const Scene scene = std::make_shared<BlendScene>(mask);
                Case work = caseOf(scene);
                unsigned char* const bytes = reinterpret_cast<unsigned char*>(scene->colors.data());
                work.ours = [scene, bytes] {
                    QxBlender::drawBitmapBlend32(0, 0, &scene->output, bytes, scene->width, scene->height, scene->width,
                                                 QXE_BLEND_DST_OVER, 0);
                };
                work.plain = [scene, bytes] { plain::dstOver32Rgba(bytes, scene->output.pixels, scene->pixels()); };
                return work;
            }};
}

Row plainDrawRow(const Mask& mask) {
    return {"draw 8 to 32", mask.name, "", mask.pixels(), [&mask] {
                const Scene scene = std::make_shared<BlendScene>(mask);
                Case work = caseOf(scene);
                work.ours = [scene] {
                    QxBlender::drawBitmap8To32(0, 0, &scene->output, scene->maskBytes(), scene->width, scene->height,
                                               kBlendColor);
                };
                work.plain = [scene] {
                    plain::draw8(scene->maskBytes(), kBlendColor, scene->output.pixels, scene->pixels());
                };
                return work;
            }};
}

/// Two pieces of coverage in one plane, as glyphs meet in it.
struct MaximumScene {
    explicit MaximumScene(const Mask& mask)
        : source(mask.coverage),
          before(mask.coverage.rbegin(), mask.coverage.rend()),
          output(static_cast<unsigned>(mask.width), static_cast<unsigned>(mask.height), before.data(), 1) {}

    std::vector<uint8_t> source, before;
    QxBitmap output;
};

Row maximumRow(const Mask& mask) {
    return {"draw 8 to 8", mask.name, "", mask.pixels(), [&mask] {
                const auto scene = std::make_shared<MaximumScene>(mask);
                const int width = mask.width, height = mask.height;
                const int64_t count = mask.pixels();
                Case work;
                work.reset = [scene] { std::copy(scene->before.begin(), scene->before.end(), scene->output.pixels); };
                work.ours = [scene, width, height] {
                    QxBlender::drawBitmap8To8(0, 0, &scene->output, scene->source.data(), width, height);
                };
                work.plain = [scene, count] { plain::maximum(scene->source.data(), scene->output.pixels, count); };
                work.peer = peers::maximum({scene->source.data(), width, height, width},
                                           {scene->output.pixels, width, height, width});
                work.result = [scene, count] {
                    return std::vector<float>(scene->output.pixels, scene->output.pixels + count);
                };
                return work;
            }};
}

}  // namespace

void addBlendRows(const std::vector<Mask>& masks, Rows& rows) {
    for (const Mask& mask : masks) {
        rows.push_back(maskRow("blend 8 src-over", mask, QXE_BLEND_SRC_OVER, plain::srcOver8));
        rows.push_back(maskRow("blend 8 dst-over", mask, QXE_BLEND_DST_OVER, plain::dstOver8));
        rows.push_back(maskRow("blend 8 dst-over, mask as gate", mask, QXE_BLEND_DST_OVER_NSA, plain::dstOverNsa8));
        rows.push_back(maskRow("blend 8 dst-over, scaled", mask, QXE_BLEND_OTHER, plain::dstOverSa8));
        rows.push_back(pictureRow("blend 32 src-over", mask, QXE_BLEND_SRC_OVER, plain::srcOver32));
        rows.push_back(pictureRow("blend 32 dst-over", mask, QXE_BLEND_DST_OVER, plain::dstOver32));
        rows.push_back(byteImageRow(mask));
        rows.push_back(plainDrawRow(mask));
        rows.push_back(maximumRow(mask));
    }
}

}  // namespace qxbench
