#pragma once

#include <Kobaltrix/KXWindow.h>

#include <map>

class KXTexture;

/// Every open window by the platform's identifier; null while there is none.
extern constinit std::map<unsigned, KXWindow*>* _windowsMap;

/// The open window with an identifier, null for none.
KXWindow* _KXWindowWithID(unsigned id);

/// Closes the platform side of every open window; the objects stay and do nothing any more.
void _KXCloseAllWindows();

/// Replaces a texture's contents in the current window. @return -1 on success, 0 on failure with an error
/// set.
int _KXWindowTextureLoadFromData(KXTexture* texture, KXSize size, int internalFormat, unsigned format,
                                 const char* data);
