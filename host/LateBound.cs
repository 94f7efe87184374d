// Runs one operation of the address book and prints its results, without a reference to the component.
//   csc /reference:System.Windows.Forms.dll LateBound.cs
//   LateBound book|recipients|contact CONNECTION-STRING [USER-ID]
using System;
using System.IO;
using System.Windows.Forms;

internal static class LateBound
{
    private const int RuntAtServer = 1;
    private const int SharedContact = 1;

    [STAThread]  // the component needs a single-threaded apartment
    private static int Main(string[] arguments)
    {
        Type type = Type.GetTypeFromProgID("KTRVAddressBook.clsMain", true);
        dynamic book = Activator.CreateInstance(type);
        int userId = arguments.Length > 2 ? int.Parse(arguments[2]) : 1;

        // Both are passed by reference. The folder of the log must exist and be writable.
        string dialect = "SQL";
        string log = Path.Combine(Path.GetTempPath(), "AddressBook.log");
        if (book.Init("", arguments[1], RuntAtServer, ref dialect, ref log) != 1)
        {
            Console.Error.WriteLine("The database did not open; " + log + " tells why.");
            return 1;
        }
        int shown = Run(book, arguments[0], userId);
        Console.WriteLine("Result: " + shown);
        GC.KeepAlive(book);  // its windows close when it is released
        return shown == 1 ? 0 : 1;
    }

    private static int Run(dynamic book, string operation, int userId)
    {
        int shown = 0;
        switch (operation)
        {
            case "book":
                shown = book.LoadAddressBook(userId);
                // The window needs a host that handles messages. A message box does so while it is open.
                if (shown == 1) MessageBox.Show("The address book is open. Press OK to end.", "Host");
                break;
            case "recipients":
                shown = book.LoadRecipients(userId, true);
                for (int number = 1; number <= book.SelectedRecipients.Count; number++)
                {
                    // The number is the recipient's number to send to, empty for a group.
                    Console.WriteLine(book.SelectedRecipients.Item(number) + " -> " +
                                      book.SelectedMobileNos.Item(number));
                }
                break;
            case "contact":
                shown = book.AddContacts(userId, SharedContact);
                Console.WriteLine("Contact: " + book.NewContactId);
                break;
        }
        return shown;
    }
}
