// The host that saves first; see the script of the same name beside this folder.
var files = new ActiveXObject("Scripting.FileSystemObject");
for (var i = 0; !files.FileExists(log + ".open"); i++) {
  if (i == 1000) throw new Error("The other host did not open the contact");
  WScript.Sleep(50);
}

function savesFirst() {
  var editor = Ui.Window("Edit Shared Contact");
  var city = Ui.Child(editor, "Edit", 12), state = Ui.Child(editor, "Edit", 13);
  Ui.WaitText(city, "Stockholm");
  Ui.Type(city, " City");
  Ui.WaitText(city, "Stockholm City");
  Ui.Type(state, "Uppland");
  Ui.WaitText(state, "Uppland");
  Ui.Click(Ui.ChildWithText(editor, "OK"));
  Ui.WaitGone(editor);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", connection, 0, dialect, log) != 1) throw new Error("Init");
Player.Play("(" + savesFirst + ")();");
if (book.EditContacts(1, 1, 1) != 1) throw new Error("EditContacts");
Player.Wait();
if (book.NewContactId != "1") throw new Error("NewContactId is '" + book.NewContactId + "'");
files.CreateTextFile(log + ".saved").Close();
