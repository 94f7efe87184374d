// A person adds and edits groups with mouse and keyboard, for each dialect word, and the rows that
// then stand in the database are exactly these.
// A number that is written into the player's text.
/* global kListed */
var kSharedGroup = 1;


// What the user's hand knows; it is sent to the other thread as text.
function Editor(caption) {
  var kTab = 9, kDown = 40;
  this.window = Ui.Window(caption);
  this.name = Ui.Child(this.window, "Edit", 0);
  this.find = Ui.Child(this.window, "Edit", 1);
  this.source = Ui.Child(this.window, "ComboBox");
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
  this.waitSelected = function(list, row) {
    for (var i = 0; Ui.SelectedRow(list) != row; i++) {
      if (i == 1000) throw new Error("Row " + row + " is not selected");
      WScript.Sleep(20);
    }
  };
  this.type = function(text) {
    Ui.Type(this.name, text);
    Ui.WaitText(this.name, text);
  };
  this.press = function(caption) {
    var button = Ui.ChildWithText(this.window, caption);
    for (var i = 0; !Ui.IsEnabled(button) && i < 1000; i++) WScript.Sleep(20);
    Ui.Click(button);
  };
  this.answer = function(text) {
    var box = Ui.Window("TALVERO Notification Server");
    Ui.ChildWithText(box, text);
    Ui.Click(Ui.Child(box, "Button"));
    Ui.WaitGone(box);
    for (var i = 0; Ui.FocusClass(this.window) != "Edit" && i < 1000; i++) WScript.Sleep(20);
    if (Ui.FocusClass(this.window) != "Edit") throw new Error("The name has not the focus");
  };
  this.finish = function(button) {
    this.press(button);
    Ui.WaitGone(this.window);
  };
}
function play(caption, user, operation) {
  Player.Play(Editor + ";\n(" + user + ")(new Editor('" + caption + "'));");
  var result = operation();
  Player.Wait();
  return result;
}

function addsTeam(editor) {
  Ui.WaitRows(editor.contacts, 8);  // a group cannot be a member
  editor.press("OK");
  editor.answer("Please enter the Group Name.");
  editor.type("Team");
  Ui.Type(editor.find, "priy");
  editor.waitSelected(editor.contacts, 2);
  Ui.PressAlt(editor.window, "S".charCodeAt(0));
  Ui.WaitRows(editor.members, 1);
  editor.choose("TALVERO Customers", 3);
  Ui.DoubleClickRow(editor.contacts, 1);
  Ui.WaitRows(editor.members, 2);
  Ui.ChildWithText(editor.window, "2 Member(s)");
  editor.finish("OK");
}
function findsNameTaken(editor) {
  editor.type("Team");
  editor.press("OK");
  editor.answer("A group with that name already exists. Please use a different group name.");
  editor.finish("Cancel");
}
function exchangesMembers(editor) {
  Ui.WaitText(editor.name, "Team");
  Ui.WaitRows(editor.contacts, 8);
  Ui.WaitRows(editor.members, kListed);
  editor.choose("Customers", 2);
  editor.press("All ->");
  Ui.WaitRows(editor.members, kListed + 2);
  Ui.ClickRow(editor.members, kListed + 1);
  editor.waitSelected(editor.members, kListed + 1);
  Ui.Press(editor.members, 46);  // Del
  Ui.WaitRows(editor.members, kListed + 1);
  Ui.Type(editor.name, " 2");
  Ui.WaitText(editor.name, "Team 2");
  editor.finish("OK");
}
function listsNothing(editor) {
  Ui.ChildWithText(editor.window, "No lists for database type MYSQL.");
  if (Ui.RowCount(editor.contacts) != 0) throw new Error("Something is listed");
  editor.type("Empty");
  editor.finish("OK");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
function initialise(dialect) {
  checkEqual(book.Init("", connection, kServer, dialect, log), 1,
             "Init");
}
function add(user) {
  checkEqual(play("New Group", user, function() {
    return book.AddGroup(kAdministrator, "2", kSharedGroup, "");
  }), 1, "AddGroup");
}
function edit(user, id) {
  checkEqual(play("Modify Group", user, function() {
    return book.EditGroup(kAdministrator, id, kSharedGroup, "");
  }), 1, "EditGroup");
}
function memberships(id) {
  return query("SELECT CONTACT_ID, CONTACT_TYPE FROM SMS_ABGROUPMAPS " +
               "WHERE GROUP_ID = " + id + " ORDER BY CONTACT_TYPE DESC, CONTACT_ID");
}

// How many of Team's two members each family lists: the first leaves remote contacts out.
var families = [{word: "SQL", listed: 1}, {word: "ORACLE", listed: 2}];
for (var i = 0; i < families.length; i++) {
  initialise(families[i].word);
  add(addsTeam);
  var id = book.NewGroupId;
  checkEqual(book.NewGroupName, "Team", "NewGroupName");
  checkEqual(book.NewGroupType, "1", "NewGroupType");
  checkEqual(query("SELECT ID, FOLDER_ID FROM SMS_ABGROUPS WHERE NAME = 'Team'"),
             id + "|2",
             "the new group");
  checkEqual(memberships(id), "3|S C0002|R", "members of the new group");

  add(findsNameTaken);
  checkEqual(book.NewGroupId + book.NewGroupName, "", "after a cancel");
  checkEqual(query("SELECT COUNT(*) FROM SMS_ABGROUPS"), 4, "groups after a cancel");

  edit(exchangesMembers.toString().replace(/kListed/g, families[i].listed), id);
  checkEqual(book.NewGroupId, id, "NewGroupId of an edited group");
  checkEqual(book.NewGroupName, "Team 2", "NewGroupName of an edited group");
  checkEqual(query("SELECT ID, NAME, FOLDER_ID FROM SMS_ABGROUPS WHERE ID = " + id),
             id + "|Team 2|2", "the edited group");
  checkEqual(memberships(id), families[i].listed == 1 ? "3|S 9|S" : "3|S 9|S C0002|R",
             "members of the edited group");
  checkEqual(memberships(1), "5|S 7|S 8|S", "members of another group");
  query("DELETE FROM SMS_ABGROUPS WHERE ID = " + id);
}

// A dialect without lists; the commands still work.
initialise("MYSQL");
add(listsNothing);
checkEqual(query("SELECT ID, NAME, FOLDER_ID FROM SMS_ABGROUPS WHERE NAME = 'Empty'"),
           book.NewGroupId + "|Empty|2", "a group added without lists");
checkEqual(memberships(book.NewGroupId), "", "its members");
