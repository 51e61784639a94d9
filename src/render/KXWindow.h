#pragma once

#include <Kobaltrix/KXWindow.h>

#include <cstdint>
#include <map>
#include <string>

class KXTexture;
struct _KXPixelBox;

/// Every open window by the platform's identifier; null while there is none.
extern constinit std::map<unsigned, KXWindow*>* _windowsMap;

/// The open window with an identifier, null for none.
KXWindow* _KXWindowWithID(unsigned id);

/// The open window with an identifier if it has a logical size, null otherwise.
KXWindow* _KXLogicalWindowWithID(unsigned id);

/// Whether the target is a window whose picture leaves bars; then the pixels of the picture, too.
bool _KXTargetHasBars(_KXPixelBox& picture);

/// The identifier of the window that was made last, 0 before the first. The platform counts them.
inline constinit unsigned _KXLastWindowID = 0;

/// A number that stands for what was drawn in a window since the last swap, and for its size.
std::uint64_t _KXHashOfPixels(KXWindow& window);
/// What the driver calls itself that draws in the current window.
std::string _KXRendererName();

/// Called before a window shows what was drawn, with its context current; null for nothing.
inline constinit auto _KXBeforeSwap = static_cast<void (*)(KXWindow& window)>(nullptr);

/// Closes the platform side of every open window; the objects stay and do nothing any more.
void _KXCloseAllWindows();

/// Replaces a texture's contents in the current window. @return -1 on success, 0 on failure with an error
/// set.
int _KXWindowTextureLoadFromData(KXTexture* texture, KXSize size, int internalFormat, unsigned format,
                                 const char* data);
