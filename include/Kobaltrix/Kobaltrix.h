#pragma once

/// @file
/// Everything the library offers, in one header.

#include <Kobaltrix/KXAudio.h>
#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXFile.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXGamePad.h>
#include <Kobaltrix/KXGeometry.h>
#include <Kobaltrix/KXIO.h>
#include <Kobaltrix/KXInterpolation.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXNetworkBuffer.h>
#include <Kobaltrix/KXPlatform.h>
#include <Kobaltrix/KXRandom.h>
#include <Kobaltrix/KXRenderContext.h>
#include <Kobaltrix/KXSprite.h>
#include <Kobaltrix/KXString.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXTextureCache.h>
#include <Kobaltrix/KXTimer.h>
#include <Kobaltrix/KXTouch.h>
#include <Kobaltrix/KXTypes.h>
#include <Kobaltrix/KXUIButton.h>
#include <Kobaltrix/KXUIDialogBox.h>
#include <Kobaltrix/KXUIFileBrowser.h>
#include <Kobaltrix/KXUIGlobalFont.h>
#include <Kobaltrix/KXUIListBox.h>
#include <Kobaltrix/KXUISlider.h>
#include <Kobaltrix/KXUITextEntry.h>
#include <Kobaltrix/KXUIWidget.h>
#include <Kobaltrix/KXVector3D.h>
#include <Kobaltrix/KXWindow.h>
