// The host's own way to the folder editor: it opens, cannot save, tells the log and is cancelled.

function tries() {
  var editor = Ui.Window("Add Folder");
  var name = Ui.Child(editor, "Edit"), list = Ui.Child(editor, "ComboBox");
  var kEnter = 13, kEscape = 27;
  Ui.ChildWithText(editor,
                   "A folder cannot be saved here. Folders are added and changed in the address book.");
  if (Ui.IsEnabled(list)) throw new Error("the list is in use while the box is cleared");
  Ui.Press(name, kEnter);
  var box = Ui.Window("TALVERO Notification Server");
  Ui.ChildWithText(box, "Please enter the Folder Name.");
  Ui.Click(Ui.Child(box, "Button"));
  Ui.WaitGone(box);
  Ui.Type(name, "Friends");
  Ui.WaitText(name, "Friends");
  Ui.Click(Ui.ChildWithText(editor, "&OK"));
  // It stays and can be typed in, with what was typed.
  Ui.Click(name);
  Ui.Press(name, 35);  // End
  Ui.Type(name, "~");
  Ui.WaitText(name, "Friends~");
  Ui.Press(name, kEscape);
  Ui.WaitGone(editor);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", connection, 0, dialect, log) != 1) throw new Error("Init");
Player.Play("(" + tries + ")();");
if (book.LoadFolders(1) != 1) throw new Error("LoadFolders");
Player.Wait();

var files = new ActiveXObject("Scripting.FileSystemObject");
var text = files.OpenTextFile(log).ReadAll();
if (text.indexOf("Sub:Save_Data(), Module: frmSelectFolder") < 0) {
  throw new Error("the save that failed is not in the log");
}
