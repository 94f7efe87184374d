// Waits until the address book lists the contacts and closes it, which ends the host.
var window = Ui.AnyWindow("Address Book", 30000);
Ui.WaitRows(Ui.Child(window, "SysListView32"), 10);
Ui.Close(window);
Ui.WaitGone(window);
