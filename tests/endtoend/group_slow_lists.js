// A person who does not wait: lists that take their time are given up, switched and closed, and OK
// before all members are there loses none of them. In ORACLE's words only: the others do not list
// remote members, which are slow here.
var kSharedGroup = 1;


function until(condition, what) {
  for (var i = 0; !condition(); i++) {
    if (i == 3000) throw new Error("Not in time: " + what);
    WScript.Sleep(20);
  }
}

function savesTooEarly() {
  var editor = Ui.Window("Modify Group"), members = Ui.Child(editor, "SysListView32", 1);
  var ok = Ui.ChildWithText(editor, "OK"), select = Ui.ChildWithText(editor, "Select ->");
  if (Ui.IsEnabled(select)) throw new Error("Members may be added before all are there");
  Ui.Click(ok);
  var box = Ui.Window("TALVERO Notification Server");
  Ui.ChildWithText(box, "The members of the group are still being loaded. Please wait.");
  Ui.Click(Ui.Child(box, "Button"));
  Ui.WaitGone(box);
  until(function() { return Ui.IsEnabled(select); }, "the members");
  Ui.WaitRows(members, 3);
  Ui.Click(ok);
  // The save compares the stored members with those that were loaded, which is slow here too.
  until(function() { return !Ui.IsShown("Modify Group"); }, "the save");
}
function switchesTwentyTimes() {
  var kTab = 9, kUp = 38, kDown = 40;
  var picker = Ui.Window("Select Recipient"), source = Ui.Child(picker, "ComboBox");
  var list = Ui.Child(picker, "SysListView32");
  Ui.WaitRows(list, 10);
  for (var i = 0; i < 20; i++) Ui.Press(source, i % 6 < 3 ? kDown : kUp);
  Ui.Press(source, kDown);
  Ui.Press(source, kTab);
  until(function() { return Ui.Text(source) == "TALVERO Dealers"; }, "the last source");
  until(function() { return Ui.Rows(list).indexOf("Northern Dealers") >= 0; }, "its rows");
  Ui.WaitRows(list, 3);
  Ui.Click(Ui.ChildWithText(picker, "Cancel"));
  Ui.WaitGone(picker);
}
function cancelsMeanwhile() {
  var picker = Ui.Window("Select Recipient"), source = Ui.Child(picker, "ComboBox");
  Ui.WaitRows(Ui.Child(picker, "SysListView32"), 10);
  for (var i = 0; i < 3; i++) Ui.Press(source, 40);
  until(function() { return Ui.Text(source) == "TALVERO Dealers"; }, "the slow source");
  Ui.Close(picker);
  Ui.WaitGone(picker);
}
function play(user, operation) {
  Player.Play(until + ";\n(" + user + ")();");
  checkEqual(operation(), 1, "the operation");
  Player.Wait();
}

function numbers(count) {
  var text = "SELECT 0 I";
  for (var i = 1; i < count; i++) text += " UNION ALL SELECT " + i;
  return "(" + text + ") ";
}
/// Reading remote contacts begins with a count that nobody asked for.
function slowDown(seconds) {
  var tensOfMillionsInASecond = /SQLite/.test(connection) ? 8 : /MariaDB/.test(connection) ? 1 : 4;
  var rows = numbers(Math.ceil(seconds * tensOfMillionsInASecond)) + "N";
  for (var i = 0; i < 7; i++) rows += ", " + numbers(10) + "N" + i;
  query("DROP VIEW V_ZUL$REMOTE_CONTACTS; CREATE VIEW V_ZUL$REMOTE_CONTACTS AS " +
        "SELECT CODE, NAME, MOBILENO, EMAIL, CATEGORY FROM ZUL$CONTACTS " +
        "WHERE (SELECT COUNT(*) FROM " + rows + ") > 0");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
checkEqual(book.Init("", connection, kServer, "ORACLE", log), 1, "Init");
slowDown(3);
play(savesTooEarly, function() {
  return book.EditGroup(kAdministrator, "2", kSharedGroup, "");
});
checkEqual(query("SELECT CONTACT_ID, CONTACT_TYPE FROM SMS_ABGROUPMAPS WHERE GROUP_ID = 2 " +
                 "ORDER BY CONTACT_TYPE DESC, CONTACT_ID"),
           "1|S 3|S D0001|R", "members of the group");
slowDown(0.2);
play(switchesTwentyTimes, function() { return book.LoadRecipients(kAdministrator); });
play(cancelsMeanwhile, function() { return book.LoadRecipients(kAdministrator); });
checkEqual(book.SelectedRecipients.Count, 0, "recipients after a cancel");

var written = files.OpenTextFile(log).ReadAll();
checkEqual(written.indexOf("Error Number"), -1, "no failure in the log, which says\n" + written);
