WScript.Echo("Grüße, नमस्ते,", WScript.Arguments.length, "argument:", WScript.Arguments(0));
