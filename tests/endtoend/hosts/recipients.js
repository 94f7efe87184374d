// Picks everybody of the folder Customers and one contact that stands in no folder.
var kDown = 0x28;
var window = Ui.AnyWindow("Select Recipient", 30000);
var source = Ui.Child(window, "ComboBox"), contacts = Ui.Child(window, "SysListView32");
Ui.WaitRows(contacts, 10);
Ui.Press(source, kDown);
Ui.WaitRows(contacts, 2);
var all = Ui.ChildWithText(window, "All ->");
while (!Ui.IsEnabled(all)) WScript.Sleep(20);
Ui.Click(all);
Ui.WaitRows(Ui.Child(window, "SysListView32", 1), 2);
Ui.Click(Ui.ChildWithText(window, "OK"));
Ui.WaitGone(window);
