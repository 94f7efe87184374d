// A person types the start of a city, and the box shows the rest selected: typing goes on over it,
// Backspace and Delete remove it, Tab and OK accept it. What was seen is what is saved.

function types() {
  var kTab = 9, kBackspace = 8, kDelete = 46, kControl = 8;
  var editor = Ui.Window("New Contact");
  var first = Ui.Child(editor, "Edit", 0), company = Ui.Child(editor, "Edit", 6);
  var city = Ui.Child(editor, "Edit", 12), state = Ui.Child(editor, "Edit", 13);
  var country = Ui.Child(editor, "Edit", 14);
  Ui.WaitText(Ui.Child(editor, "Edit", 4), "91");
  Ui.Type(first, "Ann");
  /// Types until it is completed: at first the values of the column are still being read.
  function complete(box, typed, whole) {
    for (var i = 0; Ui.Text(box) != whole; i++) {
      if (i == 40) throw new Error(typed + " is not completed but '" + Ui.Text(box) + "'");
      Ui.Press(box, 65, kControl);
      Ui.Type(box, typed);
      WScript.Sleep(250);
    }
  }
  complete(city, "Upp", "Uppsala");
  Ui.Type(city, "s");
  WScript.Sleep(100);
  Ui.WaitText(city, "Uppsala");
  Ui.Press(city, kBackspace);
  Ui.WaitText(city, "Upps");
  Ui.Type(city, "a");
  Ui.WaitText(city, "Uppsala");
  Ui.Press(city, kTab);
  complete(state, "Guj", "Gujarat");
  Ui.Press(state, kDelete);
  Ui.WaitText(state, "Guj");
  Ui.Press(state, kTab);
  complete(country, "Swe", "Sweden");
  Ui.Type(country, "dish");
  Ui.WaitText(country, "Swedish");
  complete(company, "This", "This company");
  Ui.Press(company, 13);  // Enter
  Ui.WaitGone(editor);
}

var book = WScript.CreateObject("KTRVAddressBook.clsMain");
checkEqual(book.Init("", connection, kClient, dialect, log), 1, "Init");
Player.Play("(" + types + ")();");
checkEqual(book.AddContacts(kGeneralUser, 0), 1, "AddContacts");
Player.Wait();
checkEqual(query("SELECT ORGANISATION, CITY, STATE, COUNTRY FROM SMS_ABCONTACTS WHERE FNAME = 'Ann'"),
           "This company|Uppsala|Guj|Swedish", "the contact");
checkLog();
