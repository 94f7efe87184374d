# Runs one operation of the address book and prints its results.
#   powershell -File addressbook.ps1 book|recipients|contact CONNECTION-STRING [USER-ID]
# Windows PowerShell and PowerShell 7 use a single-threaded apartment, which the component needs. Start
# the one in SysWOW64 if only the 32-bit component is registered.
param(
  [Parameter(Mandatory)] [ValidateSet('book', 'recipients', 'contact')] [string] $Operation,
  [Parameter(Mandatory)] [string] $Connection,
  [int] $UserId = 1
)
$runtAtServer = 1
$sharedContact = 1

# While the variable holds the object, its windows stay open.
$book = New-Object -ComObject KTRVAddressBook.clsMain

# Both are passed by reference. The folder of the log must exist and be writable.
$dialect = 'SQL'
$log = Join-Path $env:TEMP 'AddressBook.log'
if ($book.Init('', $Connection, $runtAtServer, [ref] $dialect, [ref] $log) -ne 1) {
  Write-Error "The database did not open; $log tells why."
  exit 1
}

switch ($Operation) {
  'book' {
    $shown = $book.LoadAddressBook($UserId)
    if ($shown -eq 1) {
      # The window needs a host that handles messages. A message box does so while it is open.
      Add-Type -AssemblyName System.Windows.Forms
      [void] [System.Windows.Forms.MessageBox]::Show('The address book is open. Press OK to end.', 'Host')
    }
  }
  'recipients' {
    $shown = $book.LoadRecipients($UserId, $true)
    for ($number = 1; $number -le $book.SelectedRecipients.Count; $number++) {
      # The number to send to is empty for a group.
      '{0} -> {1}' -f $book.SelectedRecipients.Item($number), $book.SelectedMobileNos.Item($number)
    }
  }
  'contact' {
    $shown = $book.AddContacts($UserId, $sharedContact)
    "Contact: $($book.NewContactId)"
  }
}
"Result: $shown"
exit [int] ($shown -ne 1)
