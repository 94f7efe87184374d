// A person picks recipients with mouse and keyboard, for both dialect words: contacts, groups whole
// and expanded, remote contacts, with and without the country code.

// What the user's hand knows; it is sent to the other thread as text.
function Picker() {
  var kTab = 9, kDown = 40;
  this.window = Ui.Window("Select Recipient");
  this.source = Ui.Child(this.window, "ComboBox");
  this.find = Ui.Child(this.window, "Edit");
  this.contacts = Ui.Child(this.window, "SysListView32", 0);
  this.members = Ui.Child(this.window, "SysListView32", 1);
  this.choose = function(name, rows) {
    for (var i = 0; Ui.Text(this.source) != name; i++) {
      if (i == 5) throw new Error("No source " + name);
      var former = Ui.Text(this.source);
      Ui.Press(this.source, kDown);
      for (var wait = 0; Ui.Text(this.source) == former && wait < 1000; wait++) WScript.Sleep(20);
    }
    Ui.Press(this.source, kTab);
    Ui.WaitRows(this.contacts, rows);
  };
  this.row = function(name) {
    for (var i = 0; i < 1000; i++) {
      var rows = Ui.Rows(this.contacts).split("\n");
      for (var row = 0; row < rows.length; row++) {
        if (rows[row].split("\t")[1] == name) return row;
      }
      WScript.Sleep(20);
    }
    throw new Error("No row " + name + " in\n" + rows.join("\n"));
  };
  this.waitSelected = function(list, row) {
    for (var i = 0; Ui.SelectedRow(list) != row; i++) {
      if (i == 1000) throw new Error("Row " + row + " is not selected");
      WScript.Sleep(20);
    }
  };
  this.press = function(caption) {
    var button = Ui.ChildWithText(this.window, caption);
    for (var i = 0; !Ui.IsEnabled(button) && i < 1000; i++) WScript.Sleep(20);
    Ui.Click(button);
  };
  this.finish = function(button) {
    this.press(button);
    Ui.WaitGone(this.window);
  };
}
function play(user, operation) {
  Player.Play(Picker + ";\n" + picksOfEachKind + ";\n(" + user + ")(new Picker());");
  var result = operation();
  Player.Wait();
  return result;
}

function picksOfEachKind(picker) {
  Ui.WaitRows(picker.contacts, 10);
  // Found by typing, taken by its mnemonic.
  Ui.Type(picker.find, "priy");
  picker.waitSelected(picker.contacts, picker.row("Priya"));
  Ui.PressAlt(picker.window, "S".charCodeAt(0));
  Ui.WaitRows(picker.members, 1);
  // Two at once.
  Ui.ClickRow(picker.contacts, picker.row("Control"));
  Ui.ClickRow(picker.contacts, picker.row("Management"), 8);  // with Ctrl
  picker.press("Select ->");
  Ui.WaitRows(picker.members, 3);
  // A double click takes too, and nobody twice.
  picker.choose("TALVERO Dealers", 3);
  Ui.DoubleClickRow(picker.contacts, picker.row("Northern Dealers"));
  Ui.WaitRows(picker.members, 4);
  Ui.ChildWithText(picker.window, "4 Member(s)");
  picker.press("All ->");
  Ui.WaitRows(picker.members, 6);
  // The last two go again.
  Ui.ClickRow(picker.members, 4);
  picker.waitSelected(picker.members, 4);
  Ui.ClickRow(picker.members, 5, 4);  // with Shift
  Ui.Press(picker.members, 46);  // Del
  Ui.WaitRows(picker.members, 4);
  Ui.ChildWithText(picker.window, "4 Member(s)");
}
function picksWithoutCountryCode(picker) {
  picksOfEachKind(picker);
  picker.finish("OK");
}
function picksWithCountryCode(picker) {
  picksOfEachKind(picker);
  picker.press("Prefix Country code (if available)");
  picker.finish("OK");
}
function cancels(picker) {
  Ui.WaitRows(picker.contacts, 10);
  picker.press("All ->");
  Ui.WaitRows(picker.members, 8);  // a contact keeps a group of the same number out
  picker.finish("Cancel");
}

function itemsOf(collection) {
  var items = [];
  for (var all = new Enumerator(collection); !all.atEnd(); all.moveNext()) items.push(all.item());
  checkEqual(items.length, collection.Count, "items enumerated");
  for (var i = 0; i < items.length; i++) checkEqual(collection.Item(i + 1), items[i], "by number");
  return items.join(" ");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");

/// Picks, and compares what the host gets.
function checkPick(user, expand, recipients, numbers, names) {
  checkEqual(play(user, function() { return book.LoadRecipients(kAdministrator, expand); }), 1,
             "LoadRecipients");
  checkEqual(itemsOf(book.SelectedRecipients), recipients, "SelectedRecipients");
  checkEqual(itemsOf(book.SelectedMobileNos), numbers.join(" "), "SelectedMobileNos");
  for (var i = 0; i < numbers.length; i++) {
    checkEqual(book.SelectedMobileNos.Item("M" + (i + 1)), numbers[i], "the number M" + (i + 1));
  }
  checkEqual(book.strContactsName, names, "strContactsName");
}

// Rows that are taken together come in the order of the list: where the engine does not sort a union
// of itself, contacts before groups.
function together(group, control) {
  return /MariaDB/.test(connection) ? control.concat(group) : group.concat(control);
}
var kWhole = ["SC|3|Priya|9820012345"].concat(
    together(["SG|2|Management|"], ["SC|8|Control|5550100"]),
    ["RC|D0001|Northern Dealers|919899887766"]).join(" ");
var kExpanded = ["SC|3|Priya|9820012345"].concat(
    together(["SC|1|Anna|701740611", "SC|3|Priya|9820012345",
              "SC|D0001|Northern Dealers|919899887766"], ["SC|8|Control|5550100"]),
    ["RC|D0001|Northern Dealers|919899887766"]).join(" ");
var kMembers = "Anna;Priya;Northern Dealers;";

function whole(priya) {
  return [priya].concat(together([""], ["5550100"]), ["919899887766"]);
}
function expanded(priya, anna) {
  return [priya].concat(together([anna, priya, "919899887766"], ["5550100"]), ["919899887766"]);
}

var dialects = ["SQL", "ORACLE"];
for (var i = 0; i < dialects.length; i++) {
  checkEqual(book.Init("", connection, kServer, dialects[i], log), 1,
             "Init");
  checkPick(picksWithoutCountryCode, false, kWhole, whole("9820012345"), "");
  checkPick(picksWithCountryCode, false, kWhole, whole("919820012345"), "");
  checkPick(picksWithoutCountryCode, true, kExpanded, expanded("9820012345", "701740611"), kMembers);
  checkPick(picksWithCountryCode, true, kExpanded, expanded("919820012345", "46701740611"), kMembers);
  // Nothing is left of the former pick.
  checkPick(cancels, true, "", [], "");
}

var written = WScript.CreateObject("Scripting.FileSystemObject").OpenTextFile(log).ReadAll();
checkEqual(written.indexOf("Error Number"), -1, "no failure in the log, which says\n" + written);

// A dialect without lists: the window opens, lists nothing and says so.
function findsNothing(picker) {
  Ui.ChildWithText(picker.window, "No lists for database type MYSQL.");
  if (Ui.RowCount(picker.contacts) != 0) throw new Error("Something is listed");
  picker.finish("OK");
}
checkEqual(book.Init("", connection, kServer, "MYSQL", log), 1, "Init");
checkPick(findsNothing, true, "", [], "");
