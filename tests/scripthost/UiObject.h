#pragma once

#include "tests/scripthost/ScriptObject.h"

namespace ktrv::scripthost {

/// The hand and the eye of a script on the windows of its own process; scripts find it as Ui.
/// Windows are named by their handles, as numbers. What is waited for must come within thirty
/// seconds or the number of milliseconds given last, else the script gets an error. Rows and nodes
/// that get the mouse are waited for too, because lists fill in the background.
///
///   Window(title[, ms])            the visible top-level window of that title, waited for
///   AnyWindow(title[, ms])         the same in any process; lists and trees of another process
///                                  cannot be read or worked by row or node
///   IsShown(title)                 whether there is one now
///   WaitGone(window[, ms])         waits until the window is gone or hidden
///   Child(parent, class[, n])      its n-th visible descendant of a class, waited for
///   ChildWithText(parent, text)    its visible descendant with that text, waited for
///   Text(window), SetText(window, text), IsEnabled(window)
///   WaitText(window, text[, ms])   waits until the window's text is that text
///   Rows(list), RowCount(list), Nodes(tree)
///   WaitRows(list, n[, ms])        waits until the list has n rows
///   Panel(statusBar, n), SetPanel(statusBar, n, text)     its n-th panel's text, counted from 1
///   IsExpanded(tree, text)         whether the node with that text shows those below it
///   IsSelected(tree, text)         whether that node is the selected one
///   SelectedRow(list)              its first selected row from 0, or -1
///   TopRow(list)                   its first visible row from 0
///   FocusClass(window)             the class of what has the focus in the window's thread
///   Left(window)                   pixels from its parent's left
///   Width(window), Height(window)  of the inside, in pixels
///   ClickTool(toolbar, n)          its n-th button, counted from 0
///   Click(window)                  clicks its middle
///   Drag(window, x, y, toX, toY)   with the left button, in its pixels
///   ClickAt(window, x, y), RightClickAt(window, x, y), DoubleClickAt(window, x, y)
///   ClickRow(list, n[, keys]), RightClickRow(list, n), DoubleClickRow(list, n)
///   PointAtCell(list, row, column) only moves the mouse there, counted from 0; a tip is a window
///                                  whose title is its text
///   ClickNode(tree, text), RightClickNode(tree, text)
///   Type(window, text), Press(window, virtualKey[, keys]), PressAlt(window, virtualKey)
///   Hold(window, virtualKey, n)    holds the key so long that it comes n times
///   Menu()                         the popup menu's items, waited for: captions, one a line, "-"
///                                  for a separator, in round brackets when they cannot be chosen
///   Choose(caption)                clicks that item of the popup menu, waited for
///   CloseMenu()                    leaves the popup menu with Esc
///   ClickToolArrow(toolbar, n)     the arrow of its n-th button
///   BoxLooks(box)                  a message box's icon and buttons, as "question|Yes|No*"
///   Clipboard()                    its text
///   Command(window, id), Close(window)
/// Mouse and keyboard are the system's own; keys are 4 for Shift and 8 for Ctrl, added up.
class UiObject final : public ScriptObject {
 public:
  UiObject();

 private:
  void OfferSearch();
  void OfferReading();
  void OfferInput();
  void OfferMenus();
};

}  // namespace ktrv::scripthost
