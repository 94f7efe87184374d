// A person adds, edits and cancels contacts with mouse and keyboard, for each dialect word. What is
// in the database at the end is compared with rows/contact_editor.txt.

/// The editor's controls, for the functions that play the user.
function controls(title) {
  var kNames = ["first", "middle", "last", "countryCode", "mobile", "email", "company",
                "officePhone", "homePhone", "fax", "age", "street", "city", "state", "country",
                "zip", "hobby"];
  var all = {window: Ui.Window(title)};
  for (var i = 0; i < kNames.length; i++) all[kNames[i]] = Ui.Child(all.window, "Edit", i);
  all.sex = Ui.Child(all.window, "ComboBox");
  all.birthday = Ui.Child(all.window, "SysDateTimePick32", 0);
  all.anniversary = Ui.Child(all.window, "SysDateTimePick32", 1);
  /// Types into a box that is empty, and waits until all of it has come.
  all.fill = function(name, text) {
    Ui.Type(all[name], text);
    Ui.WaitText(all[name], text);
  };
  all.waitFocus = function(windowClass) {
    for (var i = 0; Ui.FocusClass(all.window) != windowClass; i++) {
      if (i == 1000) throw new Error("No focus in a " + windowClass);
      WScript.Sleep(20);
    }
  };
  /// Into the picker that has the focus: its check box, and the date field by field.
  all.pick = function(picker, month, day, year) {
    var kSpace = 32, kRight = 39;
    Ui.Press(picker, kSpace);
    Ui.Press(picker, kRight);
    var fields = [month, day, year];
    for (var i = 0; i < fields.length; i++) {
      for (var j = 0; j < fields[i].length; j++) Ui.Press(picker, fields[i].charCodeAt(j));
      Ui.Press(picker, kRight);  // ends the field
    }
    Ui.WaitText(picker, month + "/" + day + "/" + year);
  };
  /// Marks all of a box's text and copies it; pastes into another.
  all.copyAll = function(name) {
    var kControl = 8;
    Ui.Press(all[name], 65, kControl);
    Ui.Press(all[name], 67, kControl);
  };
  all.paste = function(name) { Ui.Press(all[name], 86, 8); };
  all.answer = function(message) {
    var box = Ui.Window("TALVERO Notification Server");
    Ui.ChildWithText(box, message);
    Ui.Click(Ui.Child(box, "Button"));
    Ui.WaitGone(box);
    // What is typed before the editor has the focus back is lost.
    all.waitFocus("Edit");
  };
  return all;
}

/// Runs the operation while the function plays its user on another thread.
function play(user, operation) {
  Player.Play(controls + "(" + user + ")();");
  var result = operation();
  Player.Wait();
  return result;
}

function addsAnn() {
  var editor = controls("New Contact");
  var kTab = 9, kDown = 40, kEnter = 13;
  Ui.WaitText(editor.first, "");
  Ui.WaitText(editor.mobile, "91");
  editor.waitFocus("Edit");
  Ui.ChildWithText(editor.window, "Required, up to 50 characters.");

  // Each fault is told when Enter is pressed, one after the other.
  Ui.Press(editor.mobile, kEnter);
  editor.answer("Please enter the First Name.");
  editor.fill("first", "Ann");
  for (var i = 0; i < 2; i++) Ui.Press(editor.mobile, 8);
  Ui.WaitText(editor.mobile, "");
  Ui.Press(editor.mobile, kEnter);
  editor.answer("Please enter the Mobile No.");
  editor.fill("mobile", "000");
  Ui.Press(editor.mobile, kEnter);
  editor.answer("Enter a proper Mobile No.");
  for (i = 0; i < 3; i++) Ui.Press(editor.mobile, 8);
  Ui.WaitText(editor.mobile, "");

  // Only digits arrive in the two boxes that count.
  Ui.Type(editor.mobile, "91 9-8x7.6+");
  Ui.WaitText(editor.mobile, "919876");
  Ui.Type(editor.age, "4+1");
  Ui.WaitText(editor.age, "41");

  // A letter without Alt presses no button, whatever has the focus.
  Ui.Press(editor.age, kTab);
  editor.waitFocus("ComboBox");
  Ui.Press(editor.sex, kDown);
  Ui.Press(editor.sex, kDown);
  Ui.WaitText(editor.sex, "Female");
  Ui.Press(editor.sex, kTab);
  editor.waitFocus("SysDateTimePick32");
  Ui.Press(editor.birthday, 79);  // O
  Ui.Press(editor.birthday, 67);  // C
  editor.pick(editor.birthday, "2", "28", "1990");
  // The other one is reached from behind, where the focus comes from a box.
  Ui.Click(editor.street);
  editor.waitFocus("Edit");
  Ui.Press(editor.street, kTab, 4);  // Shift
  editor.waitFocus("SysDateTimePick32");
  Ui.ChildWithText(editor.window, "Tick the box to enter a date. It is stored only with a birthday.");
  editor.pick(editor.anniversary, "6", "12", "2015");
  Ui.Press(editor.anniversary, kTab);
  editor.waitFocus("Edit");
  editor.fill("street", "O'Brien \"&\" Co");
  editor.fill("email", "ann@lee");
  Ui.Press(editor.email, kEnter);
  editor.answer("Enter a valid Email Id");
  Ui.Press(editor.email, 35);  // End
  Ui.Type(editor.email, ".org");
  Ui.WaitText(editor.email, "ann@lee.org");
  Ui.Click(Ui.ChildWithText(editor.window, "&OK"));
  Ui.WaitGone(editor.window);
}

function editsAnn() {
  var editor = controls("Edit Shared Contact");
  Ui.WaitText(editor.first, "Ann");
  Ui.WaitText(editor.mobile, "919876");
  Ui.WaitText(editor.age, "41");
  Ui.WaitText(editor.sex, "Female");
  Ui.WaitText(editor.birthday, "2/28/1990");
  Ui.WaitText(editor.anniversary, "6/12/2015");

  // A paste longer than the box is cut, and no pair of units with it.
  var x = "";
  while (x.length < 49) x += "x";
  editor.fill("hobby", x + "\uD83D\uDE00z");
  editor.copyAll("hobby");
  editor.paste("last");
  Ui.WaitText(editor.last, x);

  // A number may be pasted where digits are wanted, and nothing else.
  for (var i = 0; i < 2; i++) Ui.Press(editor.age, 8);
  Ui.WaitText(editor.age, "");
  editor.paste("age");
  editor.fill("zip", "-5");
  editor.copyAll("zip");
  editor.paste("age");
  editor.fill("city", "33");
  editor.copyAll("city");
  editor.paste("age");
  Ui.WaitText(editor.age, "33");

  Ui.PressAlt(editor.last, 79);  // O
  Ui.WaitGone(editor.window);
}

function looksAndCancels() {
  var editor = controls("New Contact");
  Ui.WaitText(editor.first, "Ann");
  Ui.Type(editor.first, "Nobody");
  Ui.Press(editor.first, 27);  // Esc
  Ui.WaitGone(editor.window);
}

function cancelsByItsKey() {
  var editor = controls("New Contact");
  editor.fill("first", "Nobody");
  Ui.PressAlt(editor.first, 67);  // C
  Ui.WaitGone(editor.window);
}

function closesTheWindow() {
  var editor = controls("New Contact");
  editor.fill("first", "Nobody");
  Ui.Close(editor.window);
  Ui.WaitGone(editor.window);
}

// One object for all: the end of another one, whenever the engine collects it, would close the dialog.
var book = WScript.CreateObject("KTRVAddressBook.clsMain");
var dialects = ["SQL", "ORACLE", "MYSQL"];
for (var i = 0; i < dialects.length; i++) {
  checkEqual(book.Init("", connection, 0, dialects[i], log), 1, "Init");

  checkEqual(play(addsAnn, function() { return book.AddContacts(2, 0); }), 1, "AddContacts");
  var id = book.NewContactId;
  if (!(id > 0)) throw new Error("No id of the new contact: '" + id + "'");
  checkEqual(book.NewContactType, "1", "NewContactType after a save");

  checkEqual(play(editsAnn, function() { return book.EditContacts(2, 1, id); }), 1,
             "EditContacts");
  checkEqual(book.NewContactId, id, "NewContactId of an edited contact");

  checkEqual(play(looksAndCancels, function() { return book.EditContacts(2, 0, id); }), 1,
             "EditContacts of a local contact");
  checkEqual(play(looksAndCancels, function() { return book.EditContacts(2, 0, id); }), 1,
             "EditContacts after a cancel");
  checkEqual(book.NewContactType, "0", "NewContactType after a cancel");

  checkEqual(play(cancelsByItsKey, function() { return book.AddContacts(2, 0); }), 1,
             "AddContacts, cancelled");
  checkEqual(book.NewContactId, "", "NewContactId after a cancelled AddContacts");
  checkEqual(play(closesTheWindow, function() { return book.AddContacts(2, 0); }), 1,
             "AddContacts, closed");
  checkEqual(book.NewContactId, "", "NewContactId after a closed AddContacts");
}
