' What a VBScript host does with the collections of picked recipients: For Each, by number, by key,
' and keeping them after the next pick replaced them.
Dim book, dialect, kept, keptNumbers, text, joined
Set book = CreateObject("KTRVAddressBook.clsMain")

Sub Check(what, found, wanted)
  If found <> wanted Then
    WScript.Echo what & ": '" & found & "' instead of '" & wanted & "'"
    WScript.Quit 1
  End If
End Sub

' Picks everybody of the source.
Sub Pick(name, rows)
  Player.Play "var window = Ui.Window('Select Recipient');" & _
              "var source = Ui.Child(window, 'ComboBox');" & _
              "var list = Ui.Child(window, 'SysListView32');" & _
              "var all = Ui.ChildWithText(window, 'All ->');" & _
              "function until(condition) {" & _
              "  for (var i = 0; !condition() && i < 200; i++) WScript.Sleep(20);" & _
              "}" & _
              "Ui.WaitRows(list, 10);" & _
              "for (var i = 0; Ui.Text(source) != '" & name & "' && i < 5; i++) {" & _
              "  var former = Ui.Text(source);" & _
              "  Ui.Press(source, 40);" & _
              "  until(function() { return Ui.Text(source) != former; });" & _
              "}" & _
              "Ui.WaitRows(list, " & rows & ");" & _
              "until(function() { return Ui.IsEnabled(all); });" & _
              "Ui.Click(all);" & _
              "Ui.WaitRows(Ui.Child(window, 'SysListView32', 1), " & rows & ");" & _
              "Ui.Click(Ui.ChildWithText(window, 'OK'));" & _
              "Ui.WaitGone(window);"
  Check "LoadRecipients", book.LoadRecipients(1), 1
  Player.Wait
End Sub

Function ItemsOf(collection)
  ItemsOf = ""
  For Each text In collection
    ItemsOf = ItemsOf & text & vbLf
  Next
End Function

Function Failure(collection, index)
  On Error Resume Next
  text = collection(index)
  Failure = Err.Number
  On Error GoTo 0
End Function

dialect = WScript.Arguments(2)
Check "Init", book.Init("", WScript.Arguments(0), 1, dialect, WScript.Arguments(1)), 1
Pick "Customers", 2
Set kept = book.SelectedRecipients
Set keptNumbers = book.SelectedMobileNos
Check "Count", kept.Count, 2
Check "For Each", ItemsOf(kept), "SC|9|Maria|600111222" & vbLf & "SC|10|Tom|2025550143" & vbLf
Check "by number", kept(1), "SC|9|Maria|600111222"
Check "by number in a variable", kept.Item(book.SelectedRecipients.Count), "SC|10|Tom|2025550143"
Check "by key", keptNumbers("M1"), "600111222"
Check "by key in the other case", keptNumbers.Item("m2"), "2025550143"
Check "number 0", Failure(kept, 0), 9
Check "number past the end", Failure(kept, 3), 9
Check "unknown key", Failure(keptNumbers, "M3"), 5

' The next pick replaces the collections; those that the host holds stay what they were, also one
' that is being enumerated.
joined = ""
For Each text In kept
  If joined = "" Then Pick "TALVERO Dealers", 3
  joined = joined & text & vbLf
Next
Check "replaced meanwhile", joined, "SC|9|Maria|600111222" & vbLf & "SC|10|Tom|2025550143" & vbLf
Check "kept", keptNumbers("M2"), "2025550143"
Check "the new ones", book.SelectedRecipients(1), "RC|D0001|Northern Dealers|919899887766"
Check "their number", book.SelectedRecipients.Count, 3

' Groups stay whole for a host that says nothing of their members.
Pick "Field Staff", 3
Check "a group", InStr(ItemsOf(book.SelectedRecipients), "SG|3|Delivery Drivers|" & vbLf) > 0, True

' They outlive the component.
Set book = Nothing
Check "after the end of the component", ItemsOf(kept), _
      "SC|9|Maria|600111222" & vbLf & "SC|10|Tom|2025550143" & vbLf
