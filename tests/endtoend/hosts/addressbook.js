// Waits until the address book lists the contacts, closes it and ends the host.
var window = Ui.AnyWindow("Address Book", 30000);
Ui.WaitRows(Ui.Child(window, "SysListView32"), 10);
Ui.Close(window);
Ui.WaitGone(window);
var box = Ui.AnyWindow("Host");
Ui.Click(Ui.Child(box, "Button"));
Ui.WaitGone(box);
