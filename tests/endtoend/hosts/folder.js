// Looks at the folder editor and leaves.
var window = Ui.AnyWindow("Add Folder", 30000);
Ui.Click(Ui.ChildWithText(window, "Cancel"));
Ui.WaitGone(window);
