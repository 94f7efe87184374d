// How a script of tools/take-pictures requests pictures. Its arguments are CONNECTION LOG FOLDER.
var folder = WScript.Arguments(2);

/// Creates FOLDER/NAME.want; whoever takes the picture deletes the file.
function take(folder, name) {
  var files = WScript.CreateObject("Scripting.FileSystemObject");
  var want = folder + "\\" + name + ".want";
  files.CreateTextFile(want).Close();
  while (files.FileExists(want)) WScript.Sleep(20);
}

/// Requests a picture of the dialog that `operation` opens, after `fill` has filled it. The operation
/// runs here, or on the user's thread if it is a text.
function takeDialog(title, name, fill, operation) {
  var opens = typeof operation == "string" ? operation : "";
  Player.Play(take.toString() + opens + "var window = Ui.Window('" + title + "'); (" + fill +
              ")(window); take('" + folder.replace(/\\/g, "\\\\") + "', '" + name +
              "'); Ui.Close(window); Ui.WaitGone(window);");
  if (!opens) operation();
  Player.Wait();
}
