/// What the test's database answers: columns joined by bars, rows by blanks.
function query(text) {
  var files = new ActiveXObject("Scripting.FileSystemObject");
  var shell = new ActiveXObject("WScript.Shell");
  var expand = function(line) {
    return shell.ExpandEnvironmentStrings(line).replace(/\0/g, "");  // Wine's ends with one
  };
  var answer = expand("%KTRV_TEST_FOLDER%/answer" + new Date().getTime() + Math.random());
  var ask = expand('start /unix /bin/bash "%KTRV_ASK%" "%KTRV_TEST_CONNECTION%"');
  shell.Run(ask + ' "' + text + '" "' + answer + '"', 0, false);
  for (var i = 0; !files.FileExists("Z:" + answer.replace(/\//g, "\\")); i++) {
    if (i == 1000) throw new Error("No answer to " + text);
    WScript.Sleep(20);
  }
  var file = files.OpenTextFile("Z:" + answer.replace(/\//g, "\\"));
  var rows = file.AtEndOfStream ? "" : file.ReadAll();
  file.Close();
  return rows.replace(/\s+$/, "").split(/\r?\n/).join(" ");
}
