// While a contact is open in this host, another one, a process with windows of its own in second/,
// deletes it in its address book window. This one's save finds no contact: it is logged, the dialog
// stays with its text, and no contact comes back.
var kRecord = "KTRVAddressBook:  Error occured. Sub : cmdSave_Click, Module: frmNewContact()";

function read(file) {
  var files = new ActiveXObject("Scripting.FileSystemObject");
  for (var i = 0; ; i++) {
    try {
      return files.OpenTextFile(file).ReadAll();
    } catch (failure) {  // one of the hosts is writing it
      if (i == 20) throw failure;
      WScript.Sleep(50);
    }
  }
}

function savesTooLate(log, record) {
  var editor = Ui.Window("Edit Shared Contact");
  var first = Ui.Child(editor, "Edit", 0);
  var files = new ActiveXObject("Scripting.FileSystemObject");
  Ui.WaitText(first, "Anna");
  Ui.Press(first, 35);  // End
  Ui.Type(first, "-Lena");
  Ui.WaitText(first, "Anna-Lena");
  files.CreateTextFile(log + ".open").Close();
  for (var i = 0; !files.FileExists(log + ".deleted"); i++) {
    if (i == 1000) throw new Error("The other host did not delete");
    WScript.Sleep(50);
  }
  Ui.Press(first, 13);  // Enter
  for (i = 0; read(log).indexOf(record) < 0; i++) {
    if (i == 1000) throw new Error("The failure is not in the log");
    WScript.Sleep(50);
  }
  Ui.WaitText(first, "Anna-Lena");
  Ui.WaitText(Ui.Child(editor, "Edit", 12), "Stockholm");
  if (Ui.IsShown("TALVERO Notification Server")) throw new Error("A message is shown");
  Ui.Press(first, 27);  // Esc
  Ui.WaitGone(editor);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
if (book.Init("", connection, 0, dialect, log) != 1) throw new Error("Init");
Player.Play(read + "(" + savesTooLate + ")('" + log.replace(/\\/g, "\\\\") + "', '" + kRecord + "');");
if (book.EditContacts(2, 1, 1) != 1) throw new Error("EditContacts");
Player.Wait();

var text = read(log), record = text.substring(text.indexOf(kRecord));
if (record.indexOf("Error Number      : 3021\r\nError Description : Either BOF or EOF is True, or the " +
                   "current record has been deleted. Requested operation requires a current record." +
                   "\r\n") < 0 || text.split("Error Number").length != 2) {
  throw new Error("Not the one record that is wanted: " + text);
}
