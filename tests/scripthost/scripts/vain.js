// Waits for a window that never comes, on the second player: the host must not hang.
Player.Play("Ui.Window('No such window', 100);");
Player.Wait();
WScript.Quit(0);
