// A person adds, edits and cancels a contact with mouse and keyboard, for each dialect word.
var database = WScript.Arguments(0), log = WScript.Arguments(1);

function checkEqual(actual, expected, what) {
  if (actual != expected) {
    throw new Error(what + ": '" + actual + "' instead of '" + expected + "'");
  }
}
/// Runs the operation while the function plays its user on another thread.
function play(user, operation) {
  Player.Play("(" + user + ")();");
  var result = operation();
  Player.Wait();
  return result;
}

function addsAnn() {
  var editor = Ui.Window("New Contact");
  var first = Ui.Child(editor, "Edit", 0), mobile = Ui.Child(editor, "Edit", 4);
  var age = Ui.Child(editor, "Edit", 10), sex = Ui.Child(editor, "ComboBox");
  var kTab = 9, kDown = 40, kEnter = 13;
  Ui.WaitText(first, "");
  Ui.WaitText(mobile, "91");

  // Without a name Enter is answered, and the focus is where the name is wanted.
  Ui.Press(mobile, kEnter);
  var box = Ui.Window("TALVERO Notification Server");
  Ui.ChildWithText(box, "Please enter the First Name.");
  Ui.Click(Ui.Child(box, "Button"));
  Ui.WaitGone(box);
  Ui.Type(first, "Ann");
  Ui.WaitText(first, "Ann");

  // The number goes on behind the prefix, and only digits arrive.
  Ui.Type(mobile, "9-8x7.6");
  Ui.WaitText(mobile, "919876");
  Ui.Type(age, "4+1");
  Ui.WaitText(age, "41");
  Ui.Press(age, kTab);
  for (var i = 0; Ui.FocusClass(editor) != "ComboBox" && i < 100; i++) WScript.Sleep(20);
  Ui.Press(sex, kDown);
  Ui.Press(sex, kDown);
  Ui.WaitText(sex, "Female");
  Ui.Click(Ui.ChildWithText(editor, "&OK"));
  Ui.WaitGone(editor);
}

function renamesAnn() {
  var editor = Ui.Window("Edit Shared Contact");
  var first = Ui.Child(editor, "Edit", 0), last = Ui.Child(editor, "Edit", 2);
  Ui.WaitText(first, "Ann");
  Ui.WaitText(Ui.Child(editor, "Edit", 4), "919876");
  Ui.WaitText(Ui.Child(editor, "Edit", 10), "41");
  Ui.WaitText(Ui.Child(editor, "ComboBox"), "Female");
  Ui.Type(last, "Lee");
  Ui.WaitText(last, "Lee");
  Ui.PressAlt(last, 79);  // O
  Ui.WaitGone(editor);
}

function looksAndCancels() {
  var editor = Ui.Window("New Contact");
  var first = Ui.Child(editor, "Edit", 0), last = Ui.Child(editor, "Edit", 2);
  Ui.WaitText(last, "Lee");
  Ui.Type(first, "Nobody");
  Ui.Press(first, 27);  // Esc
  Ui.WaitGone(editor);
}

// One object for all: the end of another one, whenever the engine collects it, would close the dialog.
var book = WScript.CreateObject("KTRVAddressBook.clsMain");
var dialects = ["SQL", "ORACLE", "MYSQL"];
for (var i = 0; i < dialects.length; i++) {
  checkEqual(book.Init("", "Driver=SQLite3;Database=" + database, 0, dialects[i], log), 1, "Init");

  checkEqual(play(addsAnn, function() { return book.AddContacts(2, 0); }), 1, "AddContacts");
  var id = book.NewContactId;
  if (!(id > 0)) throw new Error("No id of the new contact: '" + id + "'");
  checkEqual(book.NewContactType, "1", "NewContactType after a save");

  checkEqual(play(renamesAnn, function() { return book.EditContacts(2, 1, id); }), 1,
             "EditContacts");
  checkEqual(book.NewContactId, id, "NewContactId of an edited contact");

  checkEqual(play(looksAndCancels, function() { return book.EditContacts(2, 0, id); }), 1,
             "EditContacts of a local contact");
  checkEqual(play(looksAndCancels, function() { return book.EditContacts(2, 0, id); }), 1,
             "EditContacts after a cancel");
  checkEqual(book.NewContactType, "0", "NewContactType after a cancel");
}
