// Adds a group with the contacts that stand in no folder.
var window = Ui.AnyWindow("New Group", 30000);
var name = Ui.Child(window, "Edit", 0);
Ui.WaitRows(Ui.Child(window, "SysListView32"), 8);
Ui.Type(name, "Everybody");
Ui.WaitText(name, "Everybody");
var all = Ui.ChildWithText(window, "All ->");
while (!Ui.IsEnabled(all)) WScript.Sleep(20);
Ui.Click(all);
Ui.WaitRows(Ui.Child(window, "SysListView32", 1), 8);
Ui.Click(Ui.ChildWithText(window, "OK"));
Ui.WaitGone(window);
