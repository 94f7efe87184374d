// A window with three buttons: the address book, recipients, a new contact. With a reference to the
// component: in Visual Studio "Add Reference", "COM", "KTRVAddressBook: shared address book of the
// notification server"; elsewhere
//   tlbimp KTRVAddressBook.dll /namespace:KTRVAddressBook /out:Interop.KTRVAddressBook.dll
//   csc /target:winexe /reference:Interop.KTRVAddressBook.dll AddressBookHost.cs
// Build it for the bitness of the DLL that is registered (x86 or x64, not "Any CPU").
//   AddressBookHost CONNECTION-STRING [USER-ID]
using System;
using System.IO;
using System.Text;
using System.Windows.Forms;
using KTRVAddressBook;

internal sealed class HostForm : Form
{
    // Releasing the last object closes all windows of the component, so it is kept in a field.
    private readonly clsMain book = new clsMain();
    private readonly int userId;
    private readonly FlowLayoutPanel buttons = new FlowLayoutPanel { Dock = DockStyle.Fill };

    private HostForm(string connection, int userId)
    {
        this.userId = userId;
        Text = "Host";
        Controls.Add(buttons);
        AddButton("Address book", OpenAddressBook);
        AddButton("Recipients", PickRecipients);
        AddButton("New contact", AddContact);

        // Both are passed by reference. The folder of the log must exist and be writable.
        string dialect = "SQL";
        string log = Path.Combine(Path.GetTempPath(), "AddressBook.log");
        if (book.Init("", connection, RunApplicationAt.RuntAtServer, ref dialect, ref log) != 1)
        {
            throw new InvalidOperationException("The database did not open; " + log + " tells why.");
        }
    }

    private void AddButton(string text, Action action)
    {
        var button = new Button { Text = text, AutoSize = true };
        button.Click += (sender, arguments) => action();
        buttons.Controls.Add(button);
    }

    private void OpenAddressBook()
    {
        // Returns while the window is open. Application.Run handles its messages too.
        Tell(book.LoadAddressBook(userId) == 1, null);
    }

    private void PickRecipients()
    {
        if (book.LoadRecipients(userId, true) != 1)
        {
            Tell(false, null);
            return;
        }
        var text = new StringBuilder();
        for (int number = 1; number <= book.SelectedRecipients.Count; number++)
        {
            // Kind, id, then name and number. The name may contain "|", so the number is read from
            // the other collection; it is empty for a group.
            string[] parts = book.SelectedRecipients[number].Split(new[] { '|' }, 3);
            text.AppendLine(parts[0] + " " + parts[1] + ": " + book.SelectedMobileNos[number]);
        }
        Tell(true, text.ToString());
    }

    private void AddContact()
    {
        string name = "", mobileNo = "";
        int shown = book.AddContacts(userId, TypeOfContact.SharedContact, ref name, ref mobileNo);
        Tell(shown == 1, book.NewContactId == "" ? "Cancelled." : "Contact " + book.NewContactId);
    }

    private void Tell(bool shown, string result)
    {
        if (!shown) result = "Refused or failed; the log tells why.";
        if (result != null) MessageBox.Show(this, result, Text);
    }

    [STAThread]  // the component needs a single-threaded apartment
    private static void Main(string[] arguments)
    {
        Application.Run(new HostForm(arguments[0], arguments.Length > 1 ? int.Parse(arguments[1]) : 1));
    }
}
