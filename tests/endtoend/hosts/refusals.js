// Answers each refusal, and closes the picker that is shown with the address book.
function answer(text, times) {
  for (var i = 0; i < times; i++) {
    var box = Ui.AnyWindow("TALVERO Notification Server", 30000);
    Ui.ChildWithText(box, text);
    Ui.Click(Ui.Child(box, "Button"));
    Ui.WaitGone(box);
  }
}

answer("Initialisation routine for AddressBook DLL has not been done.", 7);
answer("User has been either deleted or disabled", 7);
answer("You do not have rights to access address book. Please contact Administrator.", 1);

var picker = Ui.AnyWindow("Select Recipient", 30000);
var window = Ui.AnyWindow("Address Book");
Ui.WaitRows(Ui.Child(window, "SysListView32"), 10);
Ui.WaitRows(Ui.Child(picker, "SysListView32"), 10);
Ui.Close(picker);
Ui.WaitGone(picker);
