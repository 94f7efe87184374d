// Two hosts, each a process with windows of its own, have one contact open. The other one, in
// second/, saves first; this one saves later, and undoes nothing that its user left alone.

function savesLater(signal) {
  var editor = Ui.Window("Edit Shared Contact");
  var first = Ui.Child(editor, "Edit", 0), city = Ui.Child(editor, "Edit", 12);
  var files = new ActiveXObject("Scripting.FileSystemObject");
  Ui.WaitText(first, "Anna");
  Ui.WaitText(city, "Stockholm");
  Ui.Press(first, 35);  // End
  Ui.Type(first, "-Lena");
  Ui.WaitText(first, "Anna-Lena");
  files.CreateTextFile(signal + ".open").Close();
  for (var i = 0; !files.FileExists(signal + ".saved"); i++) {
    if (i == 1000) throw new Error("The other host did not save");
    WScript.Sleep(50);
  }
  Ui.WaitText(city, "Stockholm");
  Ui.Press(first, 13);  // Enter
  Ui.WaitGone(editor);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", connection, 0, dialect, log) != 1) throw new Error("Init");
Player.Play("(" + savesLater + ")('" + log.replace(/\\/g, "\\\\") + "');");
if (book.EditContacts(2, 1, 1) != 1) throw new Error("EditContacts");
Player.Wait();
if (book.NewContactId != "1") throw new Error("NewContactId is '" + book.NewContactId + "'");
if (new ActiveXObject("Scripting.FileSystemObject").OpenTextFile(log).ReadAll().indexOf("ERROR") >= 0) {
  throw new Error("A failure was logged");
}
