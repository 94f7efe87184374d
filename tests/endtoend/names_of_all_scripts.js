// Names in scripts that run from right to left, combine their letters or are outside the basic
// plane: typed into each box, saved, and read again in the editors, the tree and the list. What is
// in the database is compared with rows/names_of_all_scripts.txt.

/// What is typed into the boxes of a contact, in their order. The clipboard brings the last one.
function Texts() {
  this.hebrew = "\u05E9\u05DC\u05D5\u05DD \u05DB\u05D4\u05DF";
  this.arabic = "\u0645\u064F\u062D\u064E\u0645\u0651\u062F";
  this.vietnamese = "Nguye\u0302\u0303n Thi\u0323";
  this.devanagari = "\u0915\u093F\u0930\u0923 \u0936\u0930\u094D\u092E\u093E";
  this.chinese = "\u738B\u5C0F\u660E";
  this.korean = "\uAE40\uCCA0\uC218";
  this.emoji = "\uD83D\uDE00\uD83D\uDC69\u200D\uD83D\uDCBB";
  this.mixed = "Abc \u05D0\u05D1\u05D2 12 (\u05D3)";
  this.boxes = [this.hebrew, this.vietnamese, this.arabic, "\u0664\u0664", "91", "", this.devanagari,
                "\u0966\u0967", this.emoji, "\uFF11\uFF12", "", this.mixed, this.chinese, this.korean,
                this.arabic, "\uD840\uDC00", this.vietnamese + this.emoji];
}

function fillsContact(texts) {
  var editor = Ui.Window("New Contact");
  Ui.WaitText(Ui.Child(editor, "Edit", 4), "91");
  for (var i = 0; i < texts.boxes.length; i++) {
    var box = Ui.Child(editor, "Edit", i);
    if (i == 4 || !texts.boxes[i]) continue;  // the mobile number is there
    Ui.Type(box, texts.boxes[i]);
    Ui.WaitText(box, texts.boxes[i]);
  }
  // By the clipboard, from one box into another one that is empty again.
  var first = Ui.Child(editor, "Edit", 0), hobby = Ui.Child(editor, "Edit", 16), kControl = 8;
  Ui.Press(hobby, 65, kControl);
  Ui.Press(hobby, 67, kControl);
  // A second click, before the first is heard of, would select a word.
  Ui.Click(first);
  Ui.ChildWithText(editor, "Required, up to 50 characters.");
  Ui.Press(first, 35);  // End
  Ui.Type(first, " ");
  Ui.Press(first, 86, kControl);
  Ui.WaitText(first, texts.hebrew + " " + texts.boxes[16]);
  // Backspace takes back what was typed last.
  var chinese = Ui.Child(editor, "Edit", 12);
  Ui.Click(chinese);
  Ui.ChildWithText(editor, "Up to 50 characters.");
  Ui.Press(chinese, 35);
  Ui.Type(chinese, "\u5C0F");
  Ui.WaitText(chinese, texts.chinese + "\u5C0F");
  Ui.Press(chinese, 8);
  Ui.WaitText(chinese, texts.chinese);
  Ui.PressAlt(editor, 79);  // O
  Ui.WaitGone(editor);
}
function readsContact(texts) {
  var editor = Ui.Window("Edit Shared Contact");
  for (var i = 1; i < texts.boxes.length; i++) {
    Ui.WaitText(Ui.Child(editor, "Edit", i), texts.boxes[i]);
  }
  Ui.WaitText(Ui.Child(editor, "Edit", 0), texts.hebrew + " " + texts.boxes[16]);
  Ui.Press(Ui.Child(editor, "Edit", 0), 27);  // Esc
  Ui.WaitGone(editor);
}
function fillsGroup(texts) {
  var editor = Ui.Window("New Group"), name = Ui.Child(editor, "Edit", 0);
  Ui.Type(name, texts.vietnamese + texts.arabic);
  Ui.WaitText(name, texts.vietnamese + texts.arabic);
  var contacts = Ui.Child(editor, "SysListView32", 0);
  Ui.WaitRows(contacts, 9);
  Ui.Type(Ui.Child(editor, "Edit", 1), texts.hebrew);
  function current() { return Ui.Rows(contacts).split("\n")[Ui.SelectedRow(contacts)] || ""; }
  for (var i = 0; current().indexOf(texts.hebrew) < 0; i++) {
    if (i == 1000) throw new Error("The contact is not found by its name");
    WScript.Sleep(20);
  }
  Ui.DoubleClickRow(contacts, Ui.SelectedRow(contacts));
  Ui.WaitRows(Ui.Child(editor, "SysListView32", 1), 1);
  if (Ui.Rows(Ui.Child(editor, "SysListView32", 1)).indexOf(texts.hebrew) < 0) {
    throw new Error("The member has another name: " + Ui.Rows(Ui.Child(editor, "SysListView32", 1)));
  }
  Ui.Click(Ui.ChildWithText(editor, "&OK"));
  Ui.WaitGone(editor);
}

var texts = new Texts();
var kTexts = Texts + ";\nvar texts = new Texts();\n";
function play(user, operation) {
  Player.Play(kTexts + "(" + user + ")(texts);");
  var result = operation();
  Player.Wait();
  return result;
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
checkEqual(book.Init("", connection, kClient, dialect, log), 1, "Init");
checkEqual(play(fillsContact, function() { return book.AddContacts(kGeneralUser, 0); }), 1,
           "AddContacts");
var contact = book.NewContactId;
check(contact > 0, "an id of the new contact: " + contact);
checkEqual(play(readsContact, function() { return book.EditContacts(kGeneralUser, 1, contact); }),
           1, "EditContacts");
checkEqual(book.Init("", connection, kServer, dialect, log), 1, "Init for the group");
checkEqual(play(fillsGroup, function() { return book.AddGroup(kAdministrator, "2", 1, ""); }), 1,
           "AddGroup");
checkEqual(book.NewGroupName, texts.vietnamese + texts.arabic, "NewGroupName");

playBook(book, kServer, kAdministrator, "function(book) {" + kTexts + "(" + function(book, texts) {
  until(function() { return Ui.Rows(book.grid).indexOf(texts.hebrew + " " + texts.boxes[16]) >= 0; },
        "the contact in the list");
  check(Ui.Rows(book.grid).indexOf(texts.mixed) >= 0, "its street in the list");
  check(Ui.Rows(book.grid).indexOf(texts.devanagari) >= 0, "its company in the list");
  check(Ui.Nodes(book.tree).indexOf(texts.vietnamese + texts.arabic) >= 0, "the group in the tree");
  book.fromMenu("Shared Contacts", "Create Shared Folder");
  var editor = Ui.Window("Add Folder"), name = Ui.Child(editor, "Edit");
  var folder = texts.emoji + texts.chinese + texts.devanagari + texts.hebrew;
  Ui.Type(name, folder);
  Ui.WaitText(name, folder);
  Ui.Press(name, kEnter);
  book.closed(editor);
  until(function() { return Ui.Nodes(book.tree).indexOf(folder) >= 0; }, "the folder in the tree");
  // The find box finds the contact by the start of its name.
  Ui.ClickNode(book.tree, "Shared Contacts");
  var find = Ui.Child(book.window, "Edit");
  Ui.Type(find, texts.hebrew);
  until(function() {
    return (Ui.Rows(book.grid).split("\n")[Ui.SelectedRow(book.grid)] || "").indexOf(texts.hebrew) == 0;
  }, "the contact is found");
} + ")(book, texts); }");
checkLog();
