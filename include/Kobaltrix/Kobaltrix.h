#pragma once

/// @file
/// Everything the library offers, in one header.

/// @mainpage
/// A small framework for 2D games. What each operation does, its units, who owns what and how it fails stands
/// with its header:
///
/// - Start and loop: KXCore.h (KXInit.h, KXLogicLoop.h, KXError.h, KXApplication.h, KXEvents.h,
///   KXUIColors.h), KXRecording.h, KXReload.h, KXTypes.h
/// - Drawing: KXWindow.h, KXDisplay.h, KXRenderContext.h, KXTexture.h, KXDrawOptions.h, KXBlendMode.h,
///   KXCamera.h, KXShader.h, KXTextureCache.h, KXImage.h, KXDrawing.h, KXShapes.h, KXDrawBatch.h
/// - Maps of tiles: KXMap.h
/// - Sprites and values in files: KXSprite.h, KXIO.h, KXSaveFile.h
/// - Where a game's files lie, settings and saves: KXPlaces.h, KXSettings.h
/// - Text: KXFont.h, KXTextLayout.h, KXUIGlobalFont.h
/// - Input: KXKeys.h, KXKeyboard.h, KXMouse.h, KXCursor.h, KXTouch.h, KXPads.h, KXGamePad.h,
///   KXActions.h, KXInputEvents.h, KXClipboard.h
/// - Widgets: KXUIWidget.h, KXUIButton.h, KXUISlider.h, KXUIMenu.h, KXUIDialogBox.h, KXUIListBox.h,
///   KXUITextEntry.h, KXUITextArea.h, KXUITreeList.h, KXUITable.h, KXUIFileBrowser.h, KXUILabel.h,
///   KXUILayout.h, KXUICheckBox.h, KXUIRadioGroup.h, KXUIProgressBar.h, KXUIImageButton.h, KXUIDropDown.h,
///   KXUISpinBox.h, KXUINumberSlider.h, KXUITabBar.h, KXUISplitPanel.h, KXUIMenuBar.h, KXUIColorPicker.h,
///   KXUIToast.h, KXUIPanel.h, KXUIScrollPanel.h, KXUITheme.h
/// - Sound: KXAudio.h, KXSound.h, KXVoice.h, KXMusic.h
/// - Time: KXTimer.h, KXTween.h, KXInterpolation.h, KXClock.h
/// - Network: KXNetworkServer.h, KXNetworkClient.h, KXNetworkHandler.h, KXNetworkLimits.h, KXNetworkBuffer.h
/// - Chance: KXRandomGenerator.h, KXRandom.h
/// - Places: KXPointMath.h, KXCollision.h, KXGeometry.h, KXVector3D.h
/// - Helpers: KXString.h, KXFile.h, KXLog.h, KXPlatform.h
///
/// The pages under `docs/` explain how these work together; begin with `docs/getting-started.md`.

#include <Kobaltrix/KXActions.h>
#include <Kobaltrix/KXApplication.h>
#include <Kobaltrix/KXAudio.h>
#include <Kobaltrix/KXBlendMode.h>
#include <Kobaltrix/KXCamera.h>
#include <Kobaltrix/KXClipboard.h>
#include <Kobaltrix/KXClock.h>
#include <Kobaltrix/KXCollision.h>
#include <Kobaltrix/KXCore.h>
#include <Kobaltrix/KXCursor.h>
#include <Kobaltrix/KXDisplay.h>
#include <Kobaltrix/KXDrawBatch.h>
#include <Kobaltrix/KXDrawOptions.h>
#include <Kobaltrix/KXDrawing.h>
#include <Kobaltrix/KXError.h>
#include <Kobaltrix/KXEvents.h>
#include <Kobaltrix/KXFile.h>
#include <Kobaltrix/KXFont.h>
#include <Kobaltrix/KXGamePad.h>
#include <Kobaltrix/KXGeometry.h>
#include <Kobaltrix/KXIO.h>
#include <Kobaltrix/KXImage.h>
#include <Kobaltrix/KXInit.h>
#include <Kobaltrix/KXInputEvents.h>
#include <Kobaltrix/KXInterpolation.h>
#include <Kobaltrix/KXKeyboard.h>
#include <Kobaltrix/KXKeys.h>
#include <Kobaltrix/KXLog.h>
#include <Kobaltrix/KXLogicLoop.h>
#include <Kobaltrix/KXMap.h>
#include <Kobaltrix/KXMouse.h>
#include <Kobaltrix/KXMusic.h>
#include <Kobaltrix/KXNetworkBuffer.h>
#include <Kobaltrix/KXNetworkClient.h>
#include <Kobaltrix/KXNetworkHandler.h>
#include <Kobaltrix/KXNetworkLimits.h>
#include <Kobaltrix/KXNetworkServer.h>
#include <Kobaltrix/KXPads.h>
#include <Kobaltrix/KXPlaces.h>
#include <Kobaltrix/KXPlatform.h>
#include <Kobaltrix/KXPointMath.h>
#include <Kobaltrix/KXRandom.h>
#include <Kobaltrix/KXRandomGenerator.h>
#include <Kobaltrix/KXRecording.h>
#include <Kobaltrix/KXReload.h>
#include <Kobaltrix/KXRenderContext.h>
#include <Kobaltrix/KXSaveFile.h>
#include <Kobaltrix/KXSettings.h>
#include <Kobaltrix/KXShader.h>
#include <Kobaltrix/KXShapes.h>
#include <Kobaltrix/KXSound.h>
#include <Kobaltrix/KXSprite.h>
#include <Kobaltrix/KXString.h>
#include <Kobaltrix/KXTextLayout.h>
#include <Kobaltrix/KXTexture.h>
#include <Kobaltrix/KXTextureCache.h>
#include <Kobaltrix/KXTimer.h>
#include <Kobaltrix/KXTouch.h>
#include <Kobaltrix/KXTween.h>
#include <Kobaltrix/KXTypes.h>
#include <Kobaltrix/KXUIButton.h>
#include <Kobaltrix/KXUICheckBox.h>
#include <Kobaltrix/KXUIColorPicker.h>
#include <Kobaltrix/KXUIColors.h>
#include <Kobaltrix/KXUIDialogBox.h>
#include <Kobaltrix/KXUIDropDown.h>
#include <Kobaltrix/KXUIFileBrowser.h>
#include <Kobaltrix/KXUIGlobalFont.h>
#include <Kobaltrix/KXUIImageButton.h>
#include <Kobaltrix/KXUILabel.h>
#include <Kobaltrix/KXUILayout.h>
#include <Kobaltrix/KXUIListBox.h>
#include <Kobaltrix/KXUIMenu.h>
#include <Kobaltrix/KXUIMenuBar.h>
#include <Kobaltrix/KXUINumberSlider.h>
#include <Kobaltrix/KXUIPanel.h>
#include <Kobaltrix/KXUIProgressBar.h>
#include <Kobaltrix/KXUIRadioGroup.h>
#include <Kobaltrix/KXUIScrollPanel.h>
#include <Kobaltrix/KXUISlider.h>
#include <Kobaltrix/KXUISpinBox.h>
#include <Kobaltrix/KXUISplitPanel.h>
#include <Kobaltrix/KXUITabBar.h>
#include <Kobaltrix/KXUITable.h>
#include <Kobaltrix/KXUITextArea.h>
#include <Kobaltrix/KXUITextEntry.h>
#include <Kobaltrix/KXUITheme.h>
#include <Kobaltrix/KXUIToast.h>
#include <Kobaltrix/KXUITreeList.h>
#include <Kobaltrix/KXUIWidget.h>
#include <Kobaltrix/KXVector3D.h>
#include <Kobaltrix/KXVoice.h>
#include <Kobaltrix/KXWindow.h>
