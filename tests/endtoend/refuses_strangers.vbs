' A user who does not exist, or who left, is told so and gets no window.
Dim book
Set book = CreateObject("KTRVAddressBook.clsMain")
If book.Init("", WScript.Arguments(0), 1, "SQL", WScript.Arguments(1)) <> 1 Then
  WScript.Echo "The database did not open"
  WScript.Quit 1
End If

Dim user
For Each user In Array(99, 4)
  Player.Play "var box = Ui.Window('TALVERO Notification Server');" & _
              "Ui.ChildWithText(box, 'User has been either deleted or disabled');" & _
              "Ui.Click(Ui.Child(box, 'Button'));" & _
              "Ui.WaitGone(box);"
  If book.LoadAddressBook(user) <> 0 Then
    WScript.Echo "User " & user & " was let in"
    WScript.Quit 1
  End If
  Player.Wait
Next
If Ui.IsShown("Address Book") Then WScript.Quit 1
