// Adds a contact.
var window = Ui.AnyWindow("Add Shared Contact", 30000);
var name = Ui.Child(window, "Edit", 0), mobile = Ui.Child(window, "Edit", 4);
Ui.WaitText(mobile, "91");
Ui.Type(name, "Ann");
Ui.WaitText(name, "Ann");
Ui.Type(mobile, "9876");
Ui.WaitText(mobile, "919876");
Ui.Click(Ui.ChildWithText(window, "OK"));
Ui.WaitGone(window);
