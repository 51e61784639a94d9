#include "render/DrawSink.h"

#include "core/ground/HeapGlobal.h"
#include "render/CameraMap.h"
#include "render/Clip.h"
#include "render/CornerBox.h"
#include "render/DrawBatch.h"
#include "render/View.h"

#include <SDL_opengl.h>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace {
using Box = _KXCornerBox;

// What of the target is to be seen: within OpenGL's view, and within the limit of drawing.
class Seen {
public:
    Seen() {
        const _KXClip clip = _KXCurrentClip();
        GLint viewport[4];
        glGetIntegerv(GL_VIEWPORT, viewport);
        if (!clip.limits || viewport[2] <= 0 || viewport[3] <= 0)
            return;
        const auto across = [&](int pixel, int axis) {
            return 2 * static_cast<float>(pixel - viewport[axis]) / static_cast<float>(viewport[axis + 2]) -
                   1;
        };
        _part = {across(clip.x, 0), across(clip.y, 1), across(clip.x + clip.width, 0),
                 across(clip.y + clip.height, 1)};
    }

    bool meets(const Box& box, float margin) const {
        const KXPoint from = _view({box.left - margin, box.top - margin}),
                      to = _view({box.right + margin, box.bottom + margin});
        return !_view.isKnown() ||
               (std::max(from.x, to.x) >= _part.left && std::min(from.x, to.x) <= _part.right &&
                std::max(from.y, to.y) >= _part.top && std::min(from.y, to.y) <= _part.bottom);
    }

private:
    _KXView _view = _KXView::now();
    Box _part = {-1, -1, 1, 1}; // of the square that OpenGL's view is
};

class CameraSink final : public _KXDrawSink {
public:
    void quads(const _KXQuad* quads, int count, const _KXPaint& paint) override;
    void lines(const KXPoint* points, int count, bool closed, float width, KXColor color) override;
    void fan(const KXPoint* points, int count, KXColor color) override;
    void leaveColor(KXColor color) override { _KXSinkWithoutCamera().leaveColor(color); }
    void leaveLineWidth(float width) override { _KXSinkWithoutCamera().leaveLineWidth(width); }

    void mesh(const _KXMeshCorner* corners, int count);
    void forgetWhatIsSeen() { _seen.reset(); }

private:
    bool isSeen(const Box& box, float margin);
    const std::vector<KXPoint>* seen(const KXPoint* points, int count, float margin);

    std::optional<Seen> _seen;
};

// Without a batch nothing is known of the game's matrices, and asking for them each time would cost more than
// it saves.
bool CameraSink::isSeen(const Box& box, float margin) {
    if (!_KXIsCollecting())
        return true;
    if (!_seen)
        _seen.emplace();
    if (_seen->meets(box, margin))
        return true;
    ++_KXDrawStatistics.culled;
    return false;
}

void CameraSink::quads(const _KXQuad* quads, int count, const _KXPaint& paint) {
    _KXDrawSink& sink = _KXSinkWithoutCamera();
    const _KXCameraMap& map = _KXCurrentCamera;
    constexpr int most = 64;
    _KXQuad mapped[most];
    int taken = 0;
    const auto handOn = [&] {
        if (taken > 0)
            sink.quads(mapped, std::exchange(taken, 0), paint);
    };
    for (const _KXQuad* quad = quads; quad != quads + count && map.seesAnything; ++quad) {
        _KXQuad& to = mapped[taken] = *quad;
        for (_KXCorner& corner : to.corners)
            corner.position = map(corner.position);
        taken +=
            isSeen(_KXBoxAround(to.corners, 4, [](const _KXCorner& corner) { return corner.position; }), 0);
        if (taken == most)
            handOn();
    }
    handOn();
    sink.leaveColor(paint.color);
}

// The points where the camera shows them; null where that is nowhere.
const std::vector<KXPoint>* CameraSink::seen(const KXPoint* points, int count, float margin) {
    static constinit _KXHeapGlobal<std::vector<KXPoint>> kept; // shapes are drawn in every frame
    std::vector<KXPoint>& mapped = kept.get();
    mapped.resize(static_cast<std::size_t>(std::max(0, count)));
    std::transform(points, points + mapped.size(), mapped.begin(), _KXCurrentCamera);
    const bool isThere =
        !mapped.empty() && _KXCurrentCamera.seesAnything &&
        isSeen(_KXBoxAround(mapped.data(), count, [](KXPoint point) { return point; }), margin);
    return isThere ? &mapped : nullptr;
}

void CameraSink::mesh(const _KXMeshCorner* corners, int count) {
    if (!_KXCurrentCamera.seesAnything)
        return;
    static constinit _KXHeapGlobal<std::vector<_KXMeshCorner>> kept;
    std::vector<_KXMeshCorner>& mapped = kept.get();
    mapped.assign(corners, corners + count);
    for (_KXMeshCorner& corner : mapped)
        corner.position = _KXCurrentCamera(corner.position);
    const auto positionOf = [](const _KXMeshCorner& corner) { return corner.position; };
    if (count > 0 && isSeen(_KXBoxAround(mapped.data(), count, positionOf), 0))
        _KXDrawMeshWithoutCamera(mapped.data(), count);
}

void CameraSink::lines(const KXPoint* points, int count, bool closed, float width, KXColor color) {
    _KXDrawSink& sink = _KXSinkWithoutCamera();
    if (const auto* mapped = seen(points, count, width))
        return sink.lines(mapped->data(), count, closed, width, color);
    sink.leaveLineWidth(width);
    sink.leaveColor(color);
}

void CameraSink::fan(const KXPoint* points, int count, KXColor color) {
    _KXDrawSink& sink = _KXSinkWithoutCamera();
    if (const auto* mapped = seen(points, count, 0))
        return sink.fan(mapped->data(), count, color);
    sink.leaveColor(color);
}
} // namespace

static constinit CameraSink cameraSink;

_KXDrawSink& _KXCameraSink() { return cameraSink; }

void _KXDrawMeshSeen(const _KXMeshCorner* corners, int count) { cameraSink.mesh(corners, count); }

void _KXForgetWhatIsSeen() { cameraSink.forgetWhatIsSeen(); }
