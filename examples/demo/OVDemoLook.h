#pragma once

class QMenu;
class QStatusBar;
class QToolBar;
class QWidget;

// The look of the demo: language and theme, loaded at start-up and chosen in the View menu for
// the next start, and the foreground and background colour swatches bound to the application's
// colours.
namespace OVDemoLook {

// Loads the stored language (or the installation's default) and the stored theme.
void Load();
// View > Theme and View > Language.
void AddMenus(QMenu* view, QStatusBar* status);
// The two colour swatches, with a button that swaps them.
void AddSwatches(QToolBar* bar);

} // namespace OVDemoLook
