' Opens the address book of a database. The smallest possible host.
'   cscript addressbook.vbs CONNECTION-STRING [USER-ID]
Const RuntAtServer = 1

Dim userId
userId = 1
If WScript.Arguments.Count > 1 Then userId = CLng(WScript.Arguments(1))

Dim book
Set book = CreateObject("KTRVAddressBook.clsMain")
If book.Init("", WScript.Arguments(0), RuntAtServer, "SQL") <> 1 Then
  WScript.Echo "The database did not open; AddressBook.log beside the component tells why."
  WScript.Quit 1
End If

If book.LoadAddressBook(userId) = 1 Then
  ' The window needs a host that pumps messages. A message box does so while it is open.
  MsgBox "The address book is open. Press OK to end.", vbInformation, "Host"
End If
