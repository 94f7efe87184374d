' Fails on purpose in the next line but one.
Dim x
WScript.NoSuchThing x
