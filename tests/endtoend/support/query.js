/// What the database's own shell answers: columns joined by bars, rows by blanks.
function query(database, text) {
  var files = new ActiveXObject("Scripting.FileSystemObject");
  var shell = new ActiveXObject("WScript.Shell");
  var answer = database + ".answer" + new Date().getTime() + Math.random(), done = answer + ".done";
  shell.Run('start /unix /usr/bin/sqlite3 "' + database + '" ".timeout 5000" ".output ' + answer +
            '" "' + text + '" ".output stdout" ".shell touch ' + done + '"', 0, false);
  for (var i = 0; !files.FileExists("Z:" + done.replace(/\//g, "\\")); i++) {
    if (i == 500) throw new Error("No answer to " + text);
    WScript.Sleep(20);
  }
  var file = files.OpenTextFile("Z:" + answer.replace(/\//g, "\\"));
  var rows = file.AtEndOfStream ? "" : file.ReadAll();
  file.Close();
  return rows.replace(/\s+$/, "").split(/\r?\n/).join(" ");
}
