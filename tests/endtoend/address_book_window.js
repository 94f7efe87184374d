// A person browses the address book with mouse and keyboard: every kind of node, sorting, finding,
// the splitter, collapsing and refreshing.
var kTab = 9, kLeft = 37, kDown = 40;  // virtual keys

function firstWords(rows) {
  var lines = rows.split("\n"), words = [];
  for (var i = 0; i < lines.length; i++) words.push(lines[i].split(/[\t ]/)[0]);
  return words.join(" ");
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
checkEqual(book.Init("", connection, 1, dialect, log), 1, "Init");
checkEqual(book.LoadAddressBook(1), 1, "LoadAddressBook");
var window = Ui.Window("Address Book");
var tree = Ui.Child(window, "SysTreeView32"), grid = Ui.Child(window, "SysListView32");
var header = Ui.Child(grid, "SysHeader32"), status = Ui.Child(window, "msctls_statusbar32");
var tools = Ui.Child(window, "ToolbarWindow32"), find = Ui.Child(window, "Edit");

function waitItems(count) {
  until(function() { return Ui.Panel(status, 1) == count + " item(s)"; }, count + " items counted");
  Ui.WaitRows(grid, count);
}

/// As many items may have been counted before the click.
function waitListed(text, what) {
  until(function() { return Ui.Rows(grid).indexOf(text) >= 0; }, what);
}

// At the server the window opens with the root chosen and listed.
waitItems(10);
checkEqual(Ui.FocusClass(window), "SysTreeView32", "focus at the start");

// Each kind of node.
Ui.ClickNode(tree, "Customers");
waitItems(2);
check(Ui.Rows(grid).indexOf("Maria  Garcia\t34 600111222") == 0, "a shared folder's contacts");
Ui.ClickNode(tree, "TALVERO Dealers");
waitItems(3);
waitListed("Northern Dealers\t919899887766", "a remote folder's contacts");
Ui.ClickNode(tree, "Night Shift");
waitItems(3);
waitListed("Control  Room\t5550100", "a group's members");

// Down in the tree goes on to the next node, as a click does.
Ui.Press(tree, kDown);
until(function() { return Ui.Rows(grid).indexOf("Northern Dealers") >= 0; }, "a group's remote member");
waitItems(3);

// Back at the root: sort by a heading, in the user's language, both ways. Its arrow says ascending, so
// the first click reverses the order.
Ui.ClickNode(tree, "Shared Contacts");
waitItems(10);
checkEqual(firstWords(Ui.Rows(grid)).split(" ")[0], "Anna", "first by the database's order");
Ui.ClickAt(header, 20, 5);
until(function() { return /Åsa Anna$/.test(firstWords(Ui.Rows(grid))); }, "descending order");
Ui.ClickAt(header, 80, 5);  // elsewhere, lest it be a double click
until(function() { return firstWords(Ui.Rows(grid)).indexOf("Anna Åsa Control") == 0; },
      "accented names in their place, not " + firstWords(Ui.Rows(grid)));

// Find as you type, reached by its mnemonic.
Ui.PressAlt(window, "F".charCodeAt(0));
until(function() { return Ui.FocusClass(window) == "Edit"; }, "the find box has the focus");
Ui.Type(find, "priy");
until(function() {
  var row = Ui.SelectedRow(grid);
  return row >= 0 && Ui.Rows(grid).split("\n")[row].indexOf("Priya") == 0;
}, "Priya is selected");
Ui.Type(find, "zzz");
Ui.WaitText(find, "priyzzz");
check(Ui.Rows(grid).split("\n")[Ui.SelectedRow(grid)].indexOf("Priya") == 0,
      "the selection stays when nothing is found");

// Tab goes round the window although this host knows nothing of its dialogs.
Ui.Press(find, kTab);
until(function() { return Ui.FocusClass(window) == "SysTreeView32"; }, "Tab leads to the tree");

// The splitter stops at 1000 twips from either edge.
var perInch = 96, limit = Math.round(1000 * perInch / 1440);
var middle = Ui.Left(grid) - 2, height = Ui.Height(window) / 2;
Ui.Drag(window, middle, height, 2, height);
until(function() { return Math.abs(Ui.Width(tree) - limit) < 10; }, "the left limit, not " + Ui.Width(tree));
Ui.Drag(window, Ui.Left(grid) - 2, height, Ui.Width(window) - 2, height);
until(function() { return Math.abs(Ui.Width(window) - Ui.Left(grid) - limit) < 10; },
      "the right limit, not " + (Ui.Width(window) - Ui.Left(grid)));
Ui.Drag(window, Ui.Left(grid) - 2, height, 200, height);
until(function() { return Math.abs(Ui.Width(tree) - 200) < 10; }, "a place in between");

// Collapse the root with the keyboard; what is listed stays.
Ui.ClickNode(tree, "Shared Contacts");
waitItems(10);
Ui.Press(tree, kLeft);
until(function() { return !Ui.IsExpanded(tree, "Shared Contacts"); }, "the root collapses");
waitItems(10);

// Somebody else adds a contact; Refresh shows it, in the database's order again.
checkEqual(query("INSERT INTO SMS_ABCONTACTS (FOLDER_ID, FNAME) VALUES (0, 'Aaron')"), "",
           "the insert");
Ui.ClickTool(tools, 3);
waitItems(11);
checkEqual(firstWords(Ui.Rows(grid)).split(" ")[0], "Aaron", "first after the refresh");

Ui.Close(window);
Ui.WaitGone(window);

// The same window comes again.
checkEqual(book.LoadAddressBook(1), 1, "LoadAddressBook again");
window = Ui.Window("Address Book");
Ui.Close(window);
Ui.WaitGone(window);

var written = files.OpenTextFile(log).ReadAll();
checkEqual(written.indexOf("Error Number"), -1, "no failure in the log, which says\n" + written);
