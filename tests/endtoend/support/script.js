// What every script has: its arguments and its checks.
var connection = WScript.Arguments(0), log = WScript.Arguments(1), dialect = WScript.Arguments(2);
var files = new ActiveXObject("Scripting.FileSystemObject");
var kServer = 1, kClient = 0, kAdministrator = 1, kGeneralUser = 2;
var kEnter = 13, kEscape = 27, kDelete = 46, kControl = 8;

function check(truth, what) {
  if (!truth) throw new Error("Not so: " + what);
}
function checkEqual(actual, expected, what) {
  check(actual == expected, what + ": '" + actual + "' instead of '" + expected + "'");
}
function until(condition, what) {
  for (var i = 0; !condition(); i++) {
    check(i < 1000, "in time, " + what);
    WScript.Sleep(30);
  }
}
