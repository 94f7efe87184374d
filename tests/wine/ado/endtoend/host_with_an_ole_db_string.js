// A host whose existing OLE DB connection string is handed to the component unchanged: it opens the
// address book, adds a contact and reads the row that was written, itself through ADO.
var database = WScript.Arguments(0), log = WScript.Arguments(1);
var connectionString = "Provider=MSDASQL;" + WScript.Arguments(0);

function checkEqual(actual, expected, what) {
  if (actual != expected) {
    throw new Error(what + ": '" + actual + "' instead of '" + expected + "'");
  }
}
function cell(text) {
  var connection = new ActiveXObject("ADODB.Connection"), command = new ActiveXObject("ADODB.Command");
  connection.Open(connectionString);
  command.ActiveConnection = connection;
  command.CommandText = text;
  var rows = command.Execute();
  var value = rows.EOF ? "no row" : rows.Fields.Item(0).Value;
  rows.Close();
  connection.Close();
  return value;
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
checkEqual(book.Init("", connectionString, 1, "SQL", log), 1, "Init");

checkEqual(book.LoadAddressBook(1), 1, "LoadAddressBook");
var window = Ui.Window("Address Book");
var tree = Ui.Child(window, "SysTreeView32"), grid = Ui.Child(window, "SysListView32");
checkEqual(Ui.Nodes(tree),
           ["Shared Contacts", "  Customers", "  Field Staff", "    Delivery Drivers",
            "  TALVERO Dealers", "  TALVERO Customers", "  Night Shift", "  Management"].join("\n"),
           "the tree");
Ui.WaitRows(grid, 10);
if (Ui.Rows(grid).indexOf("\u0930\u093E\u091C\u0947\u0936  \u0915\u0941\u092E\u093E\u0930") < 0) {
  throw new Error("A name in Devanagari is not listed");
}
Ui.ClickNode(tree, "TALVERO Dealers");
Ui.WaitRows(grid, 3);
Ui.Close(window);
Ui.WaitGone(window);

function addsAnn() {
  var editor = Ui.Window("Add Shared Contact");
  var first = Ui.Child(editor, "Edit", 0), age = Ui.Child(editor, "Edit", 10);
  Ui.WaitText(first, "");
  Ui.Type(first, "Ann");
  Ui.Type(age, "41");
  Ui.WaitText(age, "41");
  Ui.Click(Ui.ChildWithText(editor, "&OK"));
  Ui.WaitGone(editor);
}
Player.Play("(" + addsAnn + ")();");
checkEqual(book.AddContacts(1, 1), 1, "AddContacts");
Player.Wait();
// As one text: the engine's 8-byte numbers are strange to scripts.
checkEqual(cell("SELECT ID || '|' || FNAME || '|' || AGE FROM SMS_ABCONTACTS WHERE FNAME = 'Ann'"),
           book.NewContactId + "|Ann|41", "the row that was written");

// A provider that this machine does not have is a refusal that the log explains.
var other = WScript.CreateObject("KTRVAddressBook.clsMain");
checkEqual(other.Init("", "Provider=SQLOLEDB;Data Source=nowhere", 1, "SQL", log), 0,
           "Init with a provider that is not there");
var text = new ActiveXObject("Scripting.FileSystemObject").OpenTextFile(log).ReadAll();
if (text.indexOf("Error Number      : 3706") < 0 ||
    text.indexOf("Provider cannot be found. It may not be properly installed.") < 0) {
  throw new Error("The log does not tell why: " + text);
}
