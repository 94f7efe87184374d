' Long texts go in and out in full, by value and by reference, and a host's variables stay as they are.
Dim book, longText, contactName, mobileNo, dialect, logFile
Set book = CreateObject("KTRVAddressBook.clsMain")

Sub Check(what, found, wanted)
  If found <> wanted Then
    WScript.Echo what & ": '" & Left(found, 50) & "' instead of '" & Left(wanted, 50) & "'"
    WScript.Quit 1
  End If
End Sub

longText = String(1000000, "x") & "end"
book.ClientDBString = longText
Check "length of a property", Len(book.ClientDBString), 1000003
Check "a property", book.ClientDBString, longText

dialect = "SQL"
logFile = Replace(WScript.Arguments(1), "AddressBook.log", String(150, "l") & ".log")
Check "Init", book.Init("", WScript.Arguments(0), 1, dialect, logFile), 1
Check "the log of a long name", CreateObject("Scripting.FileSystemObject").FileExists(logFile), True

contactName = String(7000, "n") & "end"
mobileNo = String(7000, "1")
Player.Play "var window = Ui.Window('Add Shared Contact');" & _
            "Ui.Close(window);" & _
            "Ui.WaitGone(window);"
Check "AddContacts", book.AddContacts(1, 1, contactName, mobileNo), 1
Player.Wait
Check "the name afterwards", contactName, String(7000, "n") & "end"
Check "the number afterwards", Len(mobileNo), 7000
