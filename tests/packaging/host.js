// A host that makes the object by its name and ends with 7; the component writes its log. With two
// file names it says that it is ready by making the first and stays until the second is there.
var book = new ActiveXObject("KTRVAddressBook.clsMain");
book.Init("", "Driver=no such driver", 1, "SQL");
if (WScript.Arguments.length > 1) {
  var files = new ActiveXObject("Scripting.FileSystemObject");
  files.CreateTextFile(WScript.Arguments(0)).Close();
  while (!files.FileExists(WScript.Arguments(1))) {
    // This host is simply there.
  }
}
WScript.Quit(7);
