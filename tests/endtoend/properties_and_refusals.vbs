' What a script sees of the component without any window: properties, collections, and what an
' operation says before and after the initialisation.
Dim book, database, logFile, text
database = WScript.Arguments(0)
logFile = WScript.Arguments(1)
Set book = CreateObject("KTRVAddressBook.clsMain")

Sub Check(what, found, wanted)
  If found <> wanted Then
    WScript.Echo what & ": '" & found & "' instead of '" & wanted & "'"
    WScript.Quit 1
  End If
End Sub

Sub AnswerBox(wanted)
  Player.Play "var box = Ui.Window('TALVERO Notification Server');" & _
              "Ui.ChildWithText(box, '" & wanted & "');" & _
              "Ui.Click(Ui.Child(box, 'Button'));" & _
              "Ui.WaitGone(box);"
End Sub

book.LogFile = "C:\mine.log"
book.ClientDBString = "DSN=Mine"
Check "LogFile", book.LogFile, "C:\mine.log"
Check "ClientDBString", book.ClientDBString, "DSN=Mine"
Check "NewContactId", book.NewContactId, ""
Check "NewContactType", book.NewContactType, "0"
Check "NewGroupId", book.NewGroupId, ""
Check "NewGroupName", book.NewGroupName, ""
Check "NewGroupType", book.NewGroupType, "0"
Check "strContactsName", book.strContactsName, ""
Check "SelectedRecipients", book.SelectedRecipients.Count, 0
Check "SelectedMobileNos", book.SelectedMobileNos.Count, 0
For Each text In book.SelectedRecipients
  Check "A recipient", text, "none"
Next

' A database that cannot be reached.
Check "Init", book.Init("", "Driver=SQLite3;Database=/nowhere/at/all.db", 1, "SQL", logFile), 0
AnswerBox "Initialisation routine for AddressBook DLL has not been done."
Check "LoadFolders", book.LoadFolders(1), 0
Player.Wait

' Variables as arguments, which scripts pass by reference.
Dim client, runFor, dialect, user
client = "": runFor = 1: dialect = "SQL": user = 2
Check "Init", book.Init(client, database, runFor, dialect, logFile), 1
Check "RemoteDBString", book.RemoteDBString, database

' At the server only an administrator may browse.
AnswerBox "You do not have rights to access address book. Please contact Administrator."
Check "LoadAddressBook", book.LoadAddressBook(user), 0
Player.Wait

' A local group cannot be opened this way; nothing is shown.
Set book = Nothing
Set book = CreateObject("KTRVAddressBook.clsMain")
runFor = 0
Check "Init", book.Init(client, database, runFor, dialect, logFile), 1
Check "EditGroup", book.EditGroup(user, "1"), 0
Check "NewGroupId", book.NewGroupId, "1"

Dim log
log = CreateObject("Scripting.FileSystemObject").OpenTextFile(logFile).ReadAll
For Each text In Array("KTRVAddressBook: Starting initialization routine...", _
    "KTRVAddressBook: Error occured. Sub: Init, Module: clsMain", _
    "KTRVAddressBook: Could not load edit group because initialisation routine not completed....", _
    "KTRVAddressBook: Initialization routine completed.....", _
    "KTRVAddressBook:  Error occured. Sub: EditGroup, Module: clsMain", _
    "Error Number      : 3704")
  If InStr(log, text & vbCrLf) = 0 Then
    WScript.Echo "Not in the log: " & text
    WScript.Quit 1
  End If
Next
