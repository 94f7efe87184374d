// What an ordinary user may do with groups, and the dialog of local groups, which are the host's.
var kClient = 0, kServer = 1, kAdministrator = 1, kOrdinaryUser = 2;
var kLocalGroup = 0, kSharedGroup = 1;

function play(user, operation) {
  Player.Play("(" + user + ")();");
  checkEqual(operation(), 1, "the operation");
  Player.Wait();
}

function looksAtSharedGroup() {
  var window = Ui.Window("Modify Group");
  Ui.WaitText(Ui.Child(window, "Edit"), "Night Shift");
  Ui.WaitRows(Ui.Child(window, "SysListView32", 0), 8);
  Ui.WaitRows(Ui.Child(window, "SysListView32", 1), 3);
  if (Ui.IsEnabled(Ui.ChildWithText(window, "OK"))) throw new Error("OK may be pressed");
  if (Ui.IsEnabled(Ui.ChildWithText(window, "New Contact"))) throw new Error("New may be pressed");
  if (!Ui.IsEnabled(Ui.ChildWithText(window, "Properties"))) throw new Error("No properties");
  Ui.Click(Ui.ChildWithText(window, "Cancel"));
  Ui.WaitGone(window);
}
function looksAtPicker() {
  var window = Ui.Window("Select Recipient");
  Ui.WaitRows(Ui.Child(window, "SysListView32"), 10);
  if (Ui.IsEnabled(Ui.ChildWithText(window, "OK"))) throw new Error("OK may be pressed");
  Ui.Press(Ui.Child(window, "Edit"), 27);  // Esc
  Ui.WaitGone(window);
}
function picksNobodyLocally() {
  var window = Ui.Window("Select Recipient");
  if (Ui.Text(Ui.Child(window, "ComboBox")) != "") throw new Error("There is a source");
  Ui.ChildWithText(window, "0 Member(s)");
  Ui.Click(Ui.ChildWithText(window, "OK"));
  Ui.WaitGone(window);
}
function addsLocalGroup() {
  var window = Ui.Window("New Group"), name = Ui.Child(window, "Edit");
  var ok = Ui.ChildWithText(window, "OK");
  Ui.Type(name, "Mine");
  Ui.WaitText(name, "Mine");
  if (Ui.Text(Ui.Child(window, "ComboBox")) != "") throw new Error("There is a source");
  if (Ui.RowCount(Ui.Child(window, "SysListView32")) != 0) throw new Error("Something is listed");
  if (!Ui.IsEnabled(ok)) throw new Error("OK may not be pressed");
  Ui.Click(ok);
  Ui.WaitGone(window);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
function initialise(runAt) {
  checkEqual(book.Init("", connection, runAt, dialect, log), 1, "Init");
}

initialise(kClient);
play(looksAtSharedGroup, function() {
  return book.EditGroup(kOrdinaryUser, "1", kSharedGroup, "");
});
// Whatever type is asked for, an ordinary user adds a local group, which is not stored here.
play(addsLocalGroup, function() { return book.AddGroup(kOrdinaryUser, "0", kSharedGroup, ""); });
checkEqual(book.NewGroupName, "Mine", "NewGroupName");
checkEqual(book.NewGroupType, "0", "NewGroupType");
checkEqual(book.NewGroupId, "", "NewGroupId");
play(addsLocalGroup, function() { return book.AddGroup(kAdministrator, "0", kLocalGroup, ""); });

// Recipients of local groups are the host's too.
play(picksNobodyLocally, function() { return book.LoadRecipients(kAdministrator); });
checkEqual(book.SelectedRecipients.Count, 0, "recipients without a source");

// At the server the recipients are there for everybody to see.
initialise(kServer);
play(looksAtPicker, function() { return book.LoadRecipients(kOrdinaryUser); });
checkEqual(book.SelectedRecipients.Count, 0, "recipients after a cancel");

var written = WScript.CreateObject("Scripting.FileSystemObject").OpenTextFile(log).ReadAll();
checkEqual(written.indexOf("Error Number"), -1, "no failure in the log, which says\n" + written);
