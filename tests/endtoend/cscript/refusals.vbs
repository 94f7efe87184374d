' Reads every property, is refused by every operation in each way, and opens two windows.
Option Explicit
Const RuntAtServer = 1, SharedContact = 1
Const Administrator = 1, FrontDesk = 2, LeftTheCompany = 4

Dim book, files, log
Set book = CreateObject("KTRVAddressBook.clsMain")
Set files = CreateObject("Scripting.FileSystemObject")
log = files.GetSpecialFolder(2) & "\" & files.GetTempName()

Sub CallAll(user)
  WScript.Echo "EditContacts: " & book.EditContacts(user, SharedContact, 1)
  WScript.Echo "AddContacts: " & book.AddContacts(user, SharedContact)
  WScript.Echo "AddGroup: " & book.AddGroup(user, "0")
  WScript.Echo "EditGroup: " & book.EditGroup(user, "1")
  WScript.Echo "LoadAddressBook: " & book.LoadAddressBook(user)
  WScript.Echo "LoadRecipients: " & book.LoadRecipients(user)
  WScript.Echo "LoadFolders: " & book.LoadFolders(user)
End Sub

Sub ReadProperties()
  WScript.Echo "LogFile: " & book.LogFile
  WScript.Echo "ClientDBString: " & book.ClientDBString
  WScript.Echo "RemoteDBString: " & book.RemoteDBString
  WScript.Echo "NewContactId: " & book.NewContactId
  WScript.Echo "NewContactType: " & book.NewContactType
  WScript.Echo "NewGroupId: " & book.NewGroupId
  WScript.Echo "NewGroupType: " & book.NewGroupType
  WScript.Echo "NewGroupName: " & book.NewGroupName
  WScript.Echo "SelectedRecipients: " & book.SelectedRecipients.Count
  WScript.Echo "SelectedMobileNos: " & book.SelectedMobileNos.Count
  WScript.Echo "strContactsName: " & book.strContactsName
End Sub

Dim nowhere
nowhere = "Driver=SQLite3;Database=/nowhere/at/all.db"
WScript.Echo "Init: " & book.Init("", nowhere, RuntAtServer, "SQL", log)
book.LogFile = "mine.log"
book.ClientDBString = "DSN=Mine"
ReadProperties
CallAll Administrator

WScript.Echo "Init: " & book.Init("", WScript.Arguments(0), RuntAtServer, "SQL", log)
CallAll LeftTheCompany
WScript.Echo "LoadAddressBook: " & book.LoadAddressBook(FrontDesk)

' The address book window lives while the picker handles the messages.
WScript.Echo "LoadAddressBook: " & book.LoadAddressBook(Administrator)
WScript.Echo "LoadRecipients: " & book.LoadRecipients(Administrator)

Dim line
For Each line In Split(files.OpenTextFile(log).ReadAll(), vbCrLf)
  If Left(line, 4) = "KTRV" Then WScript.Echo line
Next
files.DeleteFile log
