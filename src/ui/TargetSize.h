#pragma once

#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXWindow.h>

/// The extent of what is drawn into, in its units; zero without a target.
inline KXSize _KXTargetSize() {
    KXRenderContext* const target = KXCurrentRenderContext();
    if (auto* const window = dynamic_cast<KXWindow*>(target))
        return window->logicalSize();
    auto* const texture = dynamic_cast<KXTexture*>(target);
    return texture ? texture->size() : KXZeroSize;
}
