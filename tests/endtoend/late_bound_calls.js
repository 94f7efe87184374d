// How JScript calls the component: by name, with too little and with too much, and through an
// Enumerator.
var book = new ActiveXObject("KTRVAddressBook.clsMain");
var logFile = WScript.Arguments(1);

function check(what, found, wanted) {
  if (found !== wanted) {
    WScript.Echo(what + ": " + found + " instead of " + wanted);
    WScript.Quit(1);
  }
}

function numberOf(call) {
  try {
    call();
  } catch (error) {
    return error.number & 0xFFFF;
  }
  return 0;
}

check("Init", book.Init("", WScript.Arguments(0), 0, "SQL", logFile), 1);
book.ClientDBString = "Zo\u00EB \u0930\u093E\u091C\u0947\u0936";
check("ClientDBString", book.ClientDBString, "Zo\u00EB \u0930\u093E\u091C\u0947\u0936");

var count = 0;
for (var texts = new Enumerator(book.SelectedRecipients); !texts.atEnd(); texts.moveNext()) ++count;
check("SelectedRecipients", count, 0);
check("No such recipient", numberOf(function () { book.SelectedRecipients(1); }), 9);
check("No such key", numberOf(function () { book.SelectedMobileNos("x"); }), 5);
check("Text for a number", numberOf(function () { book.LoadFolders("abc"); }) !== 0, true);
check("Number out of range", numberOf(function () { book.LoadFolders(5e9); }) !== 0, true);
check("Too few", numberOf(function () { book.Init("", ""); }) !== 0, true);
check("Read-only", numberOf(function () { book.NewGroupId = "1"; }) !== 0, true);
