// A contact and a group of the same number are two rows of the picker: who opens one's properties
// picks the other unchanged.

// Contact 2 is Åsa, group 2 Management.
function looksAtOnePicksTheOther() {
  var window = Ui.Window("Select Recipient");
  var contacts = Ui.Child(window, "SysListView32", 0);
  var members = Ui.Child(window, "SysListView32", 1);
  function row(name) {
    for (var i = 0; i < 1000; i++) {
      var rows = Ui.Rows(contacts).split("\n");
      for (var n = 0; n < rows.length; n++) if (rows[n].split("\t")[1] == name) return n;
      WScript.Sleep(20);
    }
    throw new Error("No row " + name + " in\n" + rows.join("\n"));
  }
  function select(name) {
    var wanted = row(name);
    Ui.ClickRow(contacts, wanted);
    for (var i = 0; Ui.SelectedRow(contacts) != wanted; i++) {
      if (i == 1000) throw new Error(name + " is not selected");
      WScript.Sleep(20);
    }
  }
  Ui.WaitRows(contacts, 10);
  var before = Ui.Rows(contacts);
  select("\u00C5sa");
  Ui.Click(Ui.ChildWithText(window, "Properties"));
  var editor = Ui.Window("Edit Shared Contact");
  Ui.Click(Ui.ChildWithText(editor, "Cancel"));
  Ui.WaitGone(editor);
  for (var i = 0; !Ui.IsEnabled(window) && i < 1000; i++) WScript.Sleep(20);
  if (Ui.Rows(contacts) != before) throw new Error("The list changed to\n" + Ui.Rows(contacts));
  select("Management");
  Ui.Click(Ui.ChildWithText(window, "Select ->"));
  Ui.WaitRows(members, 1);
  Ui.Click(Ui.ChildWithText(window, "OK"));
  Ui.WaitGone(window);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
checkEqual(book.Init("", connection, kServer, dialect, log), 1, "Init");
Player.Play("(" + looksAtOnePicksTheOther + ")();");
checkEqual(book.LoadRecipients(kAdministrator), 1, "LoadRecipients");
Player.Wait();
checkEqual(book.SelectedRecipients.Count, 1, "recipients");
checkEqual(book.SelectedRecipients.Item(1), "SG|2|Management|", "the recipient");

var written = WScript.CreateObject("Scripting.FileSystemObject").OpenTextFile(log).ReadAll();
checkEqual(written.indexOf("Error Number"), -1, "no failure in the log, which says\n" + written);
