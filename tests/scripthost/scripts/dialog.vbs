' Answers its own message box with No, from the second player.
Player.Play "var box = Ui.Window('A question');" & _
            "Ui.Click(Ui.ChildWithText(box, 'No'));" & _
            "Ui.WaitGone(box);"
If MsgBox("Stay?", vbYesNo, "A question") <> vbNo Then WScript.Quit 1
Player.Wait
