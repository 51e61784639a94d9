#include "render/CameraMap.h"

#include "core/ground/HeapGlobal.h"
#include "render/Clip.h"
#include "render/ClipScope.h"
#include "render/KXRenderContext.h"
#include "render/QuadStream.h"

#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXWindow.h>

#include <SDL_opengl.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace {
struct Pushed {
    KXCamera camera;
    std::optional<_KXClip> clip; // the limit before, if the camera has set another
};
} // namespace

static constinit _KXHeapGlobal<std::vector<Pushed>> pushed;
static constinit int suspended = 0;

static KXSize sizeOfTarget() {
    if (!_KXCurrentRenderContext)
        return KXZeroSize;
    if (_KXCurrentRenderContext == _KXCurrentWindowRenderContext)
        return static_cast<KXWindow*>(_KXCurrentRenderContext)->logicalSize();
    return static_cast<KXTexture*>(_KXCurrentRenderContext)->size();
}

static KXRect areaOf(const KXCamera& camera) {
    const auto& [origin, size] = camera.area;
    if (size.width >= 0 && size.height >= 0)
        return camera.area;
    const KXSize target = sizeOfTarget();
    return {origin,
            {size.width < 0 ? target.width - origin.x : size.width,
             size.height < 0 ? target.height - origin.y : size.height}};
}

static _KXCameraMap mapOf(const KXCamera& camera) {
    const auto& [origin, size] = areaOf(camera);
    const auto [cosine, sine] = _KXRotationBy(-camera.rotation);
    const float scale = camera.zoom;
    _KXCameraMap map = {true,
                        scale * cosine,
                        -scale * sine,
                        scale * sine,
                        scale * cosine,
                        camera.centre,
                        {origin.x + size.width / 2, origin.y + size.height / 2},
                        camera.sharpText != 0};
    map.seesAnything = scale > 0 && size.width > 0 && size.height > 0;
    for (const float number : {map.xx, map.xy, map.centre.x, map.centre.y, map.middle.x, map.middle.y})
        map.seesAnything = map.seesAnything && std::isfinite(number);
    return map;
}

void _KXAimCamera() {
    _KXHasCamera = suspended == 0 && pushed.find() && !pushed.get().empty();
    if (_KXHasCamera)
        _KXCurrentCamera = mapOf(pushed.get().back().camera);
    _KXForgetWhatIsSeen();
}

KXRect _KXCameraArea() { return areaOf(pushed.get().back().camera); }

void _KXFreeCameras() {
    pushed.free();
    _KXAimCamera();
}

_KXNoCameraScope::_KXNoCameraScope() {
    ++suspended;
    _KXAimCamera();
}

_KXNoCameraScope::~_KXNoCameraScope() {
    --suspended;
    _KXAimCamera();
}

void KXPushCamera(const KXCamera& camera) {
    pushed.get().push_back({camera, std::nullopt});
    _KXAimCamera();
    const auto& [origin, size] = camera.area;
    const bool isPart = origin.x != 0 || origin.y != 0 || size.width >= 0 || size.height >= 0;
    if (!isPart || !_KXCurrentCamera.seesAnything || _KXCurrentGraphicsContext == 0)
        return;
    pushed.get().back().clip = _KXCurrentClip();
    _KXSetClip(_KXClipWithin(*pushed.get().back().clip, _KXCameraArea()));
}

void KXPopCamera() {
    if (!pushed.find() || pushed.get().empty())
        return;
    const std::optional<_KXClip> clip = pushed.get().back().clip;
    pushed.get().pop_back();
    _KXAimCamera();
    if (clip && _KXCurrentGraphicsContext != 0)
        _KXSetClip(*clip);
}

void _KXMultiplyCamera() {
    const auto& [seesAnything, xx, xy, yx, yy, centre, middle, hasSharpText] = _KXCurrentCamera;
    const float show = seesAnything ? 1.0f : 0.0f;
    const GLfloat matrix[16] = {xx * show, yx * show, 0, 0, xy * show, yy * show, 0, 0,
                                0,         0,         1, 0, middle.x,  middle.y,  0, 1};
    glMultMatrixf(matrix);
    glTranslatef(-centre.x, -centre.y, 0);
}

// Back through a map: the turn the other way, and the zoom undone.
static KXPoint toWorld(const _KXCameraMap& map, KXPoint point) {
    const float x = point.x - map.middle.x, y = point.y - map.middle.y;
    const float square = map.xx * map.xx + map.xy * map.xy;
    return {(map.xx * x + map.yx * y) / square + map.centre.x,
            (map.xy * x + map.yy * y) / square + map.centre.y};
}

KXPoint KXCameraToWorld(const KXCamera& camera, KXPoint point) {
    const _KXCameraMap map = mapOf(camera);
    return map.seesAnything ? toWorld(map, point) : KXZeroPoint;
}

KXPoint KXCameraFromWorld(const KXCamera& camera, KXPoint world) {
    const _KXCameraMap map = mapOf(camera);
    return map.seesAnything ? map(world) : KXZeroPoint;
}

KXRect KXCameraBounds(const KXCamera& camera) {
    const _KXCameraMap map = mapOf(camera);
    if (!map.seesAnything)
        return KXZeroRect;
    const auto& [origin, size] = areaOf(camera);
    const KXPoint corner = toWorld(map, origin), opposite = toWorld(map, {origin.x + size.width, origin.y}),
                  centre = camera.centre;
    // The other two lie as far from the centre, across it.
    const float width = std::max(std::abs(corner.x - centre.x), std::abs(opposite.x - centre.x)),
                height = std::max(std::abs(corner.y - centre.y), std::abs(opposite.y - centre.y));
    return {{centre.x - width, centre.y - height}, {2 * width, 2 * height}};
}
