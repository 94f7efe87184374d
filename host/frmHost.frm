VERSION 5.00
Begin VB.Form frmHost
   Caption         =   "Host"
   ClientHeight    =   840
   ClientLeft      =   60
   ClientTop       =   345
   ClientWidth     =   5400
   LinkTopic       =   "Form1"
   ScaleHeight     =   840
   ScaleWidth      =   5400
   StartUpPosition =   2  'CenterScreen
   Begin VB.CommandButton cmdContact
      Caption         =   "New contact"
      Height          =   495
      Left            =   3600
      TabIndex        =   2
      Top             =   180
      Width           =   1575
   End
   Begin VB.CommandButton cmdRecipients
      Caption         =   "Recipients"
      Height          =   495
      Left            =   1920
      TabIndex        =   1
      Top             =   180
      Width           =   1575
   End
   Begin VB.CommandButton cmdBook
      Caption         =   "Address book"
      Height          =   495
      Left            =   240
      TabIndex        =   0
      Top             =   180
      Width           =   1575
   End
End
Attribute VB_Name = "frmHost"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
' The address book, recipients and a new contact from VB6. Start it with the connection string as
' argument.
Option Explicit

' Releasing the last object closes all windows of the component, so the form keeps it.
Private book As KTRVAddressBook.clsMain
Private Const kUserId As Long = 1

Private Sub Form_Load()
  Set book = New KTRVAddressBook.clsMain
  ' The folder of the log must exist and be writable.
  If book.Init("", Command$, RuntAtServer, "SQL", Environ$("TEMP") & "\AddressBook.log") <> 1 Then
    MsgBox "The database did not open; AddressBook.log in the folder TEMP tells why."
    Unload Me
  End If
End Sub

Private Sub cmdBook_Click()
  ' Returns while the window is open. VB handles its messages too.
  If book.LoadAddressBook(kUserId) <> 1 Then TellRefused
End Sub

Private Sub cmdRecipients_Click()
  Dim number As Long, parts() As String, text As String
  If book.LoadRecipients(kUserId, True) <> 1 Then
    TellRefused
    Exit Sub
  End If
  For number = 1 To book.SelectedRecipients.Count
    ' Kind, id, then name and number. The name may contain "|", so the number is read from the other
    ' collection; it is empty for a group.
    parts = Split(book.SelectedRecipients.Item(number), "|", 3)
    text = text & parts(0) & " " & parts(1) & ": " & book.SelectedMobileNos.Item(number) & vbCrLf
  Next
  MsgBox text
End Sub

Private Sub cmdContact_Click()
  Dim name As String, mobileNo As String
  If book.AddContacts(kUserId, SharedContact, name, mobileNo) <> 1 Then
    TellRefused
  ElseIf book.NewContactId = "" Then
    MsgBox "Cancelled."
  Else
    MsgBox "Contact " & book.NewContactId
  End If
End Sub

Private Sub TellRefused()
  MsgBox "Refused or failed; the log tells why."
End Sub
