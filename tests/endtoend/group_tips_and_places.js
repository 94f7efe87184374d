// A person tells people of the same first name apart by their tips, in both lists of both dialogs, and
// finds each source of the left list again as it was left.
var kSharedGroup = 1;

function until(condition, what) {
  for (var i = 0; !condition(); i++) {
    if (i == 1000) throw new Error("Not in time: " + what);
    WScript.Sleep(20);
  }
}
function namesIn(list) {
  var rows = Ui.Rows(list).split("\n"), names = [];
  for (var i = 0; i < rows.length; i++) names.push(rows[i].split("\t")[1]);
  return names;
}
function rowOf(list, cells) {
  var rows = Ui.Rows(list).split("\n");
  for (var i = 0; i < rows.length; i++) if (rows[i].indexOf("\t" + cells) >= 0) return i;
  throw new Error("No row " + cells + " in " + rows.join("; "));
}
/// Rests the mouse on a name until the tip is there.
function waitTip(list, row, tip) {
  for (var i = 0; !Ui.IsShown(tip); i++) {
    if (i == 10) throw new Error("No tip " + tip);
    Ui.PointAtCell(list, row, 1);
    for (var j = 0; j < 75 && !Ui.IsShown(tip); j++) WScript.Sleep(20);
  }
}
function waitTips(list) {
  var meyer = "Anna Meyer, Harbour Freight", lindgren = "Anna Maria Lindgren, Lindgren Design";
  waitTip(list, rowOf(list, "Anna\t46 701740611"), lindgren);
  waitTip(list, rowOf(list, "Anna\t44 7700900999"), meyer);
  Ui.PointAtCell(list, rowOf(list, "Priya"), 1);
  until(function() { return !Ui.IsShown(meyer); }, "the end of the tip");
  WScript.Sleep(1000);
  if (Ui.IsShown("Priya Sharma, Monsoon Media")) throw new Error("A tip for the only Priya");
}

function picks() {
  var kDown = 40, kUp = 38, kF4 = 115;
  var picker = Ui.Window("Select Recipient"), source = Ui.Child(picker, "ComboBox");
  var contacts = Ui.Child(picker, "SysListView32", 0), members = Ui.Child(picker, "SysListView32", 1);
  function choose(key, name) {
    until(function() { return Ui.FocusClass(picker) != "ComboBox"; }, "another focus");
    Ui.Press(source, kF4);  // closes the list, which the click for the focus has opened
    Ui.Press(source, key);
    until(function() { return Ui.Text(source) == name; }, name);
  }
  Ui.WaitRows(contacts, 71);
  waitTips(contacts);
  Ui.ClickRow(contacts, rowOf(contacts, "Anna\t46"));
  Ui.ClickRow(contacts, rowOf(contacts, "Anna\t44"), 8);
  Ui.ClickRow(contacts, rowOf(contacts, "Priya"), 8);
  Ui.Click(Ui.ChildWithText(picker, "Select ->"));
  Ui.WaitRows(members, 3);
  waitTips(members);

  // Another source and back.
  var heading = Ui.Child(contacts, "SysHeader32");
  Ui.ClickAt(heading, 100, 8);
  until(function() { return namesIn(contacts)[0] == "Anna"; }, "A to Z");
  Ui.ClickAt(heading, 60, 8);
  until(function() { return namesIn(contacts)[70] == "Anna"; }, "Z to A");
  Ui.ClickRow(contacts, 69);
  until(function() { return Ui.SelectedRow(contacts) == 69; }, "the last row but one");
  var before = Ui.Rows(contacts), top = Ui.TopRow(contacts);
  if (top == 0) throw new Error("The list is not scrolled");
  choose(kDown, "Customers");
  until(function() { return Ui.Rows(contacts) != before; }, "its rows");
  if (Ui.SelectedRow(contacts) != -1) throw new Error("A row of the other source is selected");
  Ui.ClickRow(contacts, 1);
  until(function() { return Ui.SelectedRow(contacts) == 1; }, "another row");
  choose(kUp, "Shared Contacts");
  until(function() { return Ui.Rows(contacts) == before; }, "the rows in their order");
  until(function() { return Ui.SelectedRow(contacts) == 69; }, "the current row");
  if (Ui.TopRow(contacts) != top) throw new Error("Scrolled to " + Ui.TopRow(contacts));
  Ui.ClickRow(contacts, 69);
  choose(kDown, "Customers");
  until(function() { return Ui.SelectedRow(contacts) == 1; }, "its current row");
  Ui.Click(Ui.ChildWithText(picker, "Cancel"));
  Ui.WaitGone(picker);
}

function edits() {
  var editor = Ui.Window("Modify Group");
  var contacts = Ui.Child(editor, "SysListView32", 0), members = Ui.Child(editor, "SysListView32", 1);
  Ui.WaitRows(contacts, 69);
  Ui.Click(Ui.ChildWithText(editor, "All ->"));
  until(function() { return Ui.RowCount(members) >= 69; }, "all members");
  waitTips(contacts);
  waitTips(members);
  Ui.Click(Ui.ChildWithText(editor, "Cancel"));
  Ui.WaitGone(editor);
}

function play(user, operation) {
  Player.Play([until, namesIn, rowOf, waitTip, waitTips].join(";\n") + ";\n(" + user + ")();");
  var result = operation();
  Player.Wait();
  return result;
}

query("INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME, LNAME, ORGANISATION, COUNTRYCODE, MOBILENO) " +
      "VALUES (0, 'Anna', 'Meyer', 'Harbour Freight', '44', '7700900999')");
var more = [];
for (var i = 0; i < 60; i++) more.push("(0, 'Name " + (100 + i) + "')");
query("INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME) VALUES " + more.join(", "));
var book = WScript.CreateObject("KTRVAddressBook.clsMain");
checkEqual(book.Init("", connection, kServer, dialect, log), 1, "Init");
checkEqual(play(picks, function() { return book.LoadRecipients(kAdministrator); }), 1, "LoadRecipients");
checkEqual(play(edits, function() {
  return book.EditGroup(kAdministrator, "1", kSharedGroup, "");
}), 1, "EditGroup");

var written = files.OpenTextFile(log).ReadAll();
checkEqual(written.indexOf("Error Number"), -1, "no failure in the log, which says\n" + written);
