// Lets the user pick recipients and prints them.
//   cscript recipients.js CONNECTION-STRING [USER-ID]
var kRuntAtServer = 1;

var connection = WScript.Arguments(0);
var userId = WScript.Arguments.length > 1 ? parseInt(WScript.Arguments(1), 10) : 1;

function pick(book) {
  var expandGroups = true;
  if (book.Init("", connection, kRuntAtServer, "SQL") != 1) {
    WScript.Echo("The database did not open; AddressBook.log beside the component tells why.");
    return 1;
  }
  // The call returns after the user has closed the dialog.
  if (book.LoadRecipients(userId, expandGroups) != 1) {
    WScript.Echo("The user may not pick, or something failed; the log tells.");
    return 1;
  }
  var recipients = new Enumerator(book.SelectedRecipients);
  for (var number = 1; !recipients.atEnd(); recipients.moveNext(), number++) {
    var parts = recipients.item().split("|");   // kind, id, name, mobile number
    var name = parts.slice(2, -1).join("|");    // the name may contain "|"
    WScript.Echo(parts[0] + " " + parts[1] + ": " + name + ", send to " +
                 book.SelectedMobileNos.Item("M" + number));
  }
  WScript.Echo(book.SelectedRecipients.Count + " recipients");
  return 0;
}

WScript.Quit(pick(new ActiveXObject("KTRVAddressBook.clsMain")));
