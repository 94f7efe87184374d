#include "tests/wine/gallery/GalleryForm.h"

namespace ktrv::gallery {

using controls::Image;

GalleryForm::GalleryForm(controls::Screen& screen)
    : Form(screen, {u"Address Book", 12000, 8000, true, 6000, 4000}),
      Tree(*this, {0, 600, 3000, 4000},
           {Image::SharedContacts, Image::None, Image::Group, Image::Folder, Image::RemoteFolder}) {
  Tools.AddButton({u"NEW", u"New", u"Create a contact", Image::New, true, true});
  Tools.AddButton({u"PROPERTIES", u"Properties", u"Open the item", Image::Properties});
  Tools.AddButton({u"DELETE", u"Delete", u"Delete the item", Image::Delete});
  Tools.AddButton({u"REFRESH", u"Refresh", u"Load the list again", Image::Refresh});
  Tools.SetBand(FindLabel, Find);
  Tools.ButtonDropDown = [this](const String&, int x, int y) {
    Display().ShowMenu(*this, Popup, controls::Screen::Point{x, y});
  };
  Tools.ButtonClick = [this](const String& key) { Display().ShowMessage(key, u"Gallery", 0x30); };
  Find.Cue = u"Name";
  Popup.Items = {{u"a", u"Create Shared Contact"},
                 {u"b", u"Create Shared Group"},
                 {u"c", u"-"},
                 {u"d", u"Properties"}};
  Tree.MouseUp = [this](controls::MouseButton button, std::int16_t, int, int) {
    if (button == controls::MouseButton::Right) Display().ShowMenu(*this, Popup, std::nullopt);
  };
  Find.Change = [this] {
    const int row = Grid.FindRow(Find.Text(), 1, 0);
    if (row <= 0) return;
    Grid.SetRow(row);
    Grid.ShowRow(row);
  };
  Shadow.SetVisible(false);
}

void GalleryForm::Form_Load() {
  FillTree();
  FillGrid();
  Status.AddPanel({u"1000 item(s)", 2000, true});
  Status.AddPanel({u"", 2000, false});
  Status.AddPanel({u"", 3000, false});
  Progress.PlaceIn(Status, 3);
  Progress.SetValue(40);
}

void GalleryForm::FillTree() {
  Tree.Add(u"", u"SHARED", u"Shared Contacts", 1).Tag = u"SHARED";
  Tree.Add(u"SHARED", u"SFLD1", u"Customers", 4, 4);
  Tree.Add(u"SHARED", u"SFLD2", u"Suppliers", 4, 4);
  Tree.Add(u"SHARED", u"RFLD3", u"Dealers of the ERP", 5, 5);
  Tree.Add(u"SFLD1", u"SHGR1", u"Key accounts", 3);
  Tree.Add(u"SHARED", u"SHGR2", u"Night shift", 3);
  Tree.SetExpanded(Tree.At(1), true);
  Tree.SetExpanded(Tree.At(2), true);
  Tree.Select(&Tree.At(2));
}

void GalleryForm::FillGrid() {
  Grid.Reset(1, 4);
  Grid.ColumnAt(0) = {u"NAME", u"Name", 3000};
  Grid.ColumnAt(1) = {u"MOBILENO", u"Mobile No", 2500};
  Grid.ColumnAt(2) = {u"EMAIL", u"Email", 3000};
  Grid.ColumnAt(3) = {u"CONTACTTYPE", u"", 300, controls::GridColumn::Alignment::Center};
  Grid.ColumnAt(3).Picture = [](StringView type) -> std::pair<Image, String> {
    if (type == u"2") return {Image::Group, u"Group"};
    if (type == u"3") return {Image::RemoteContact, u"Remote contact"};
    return {Image::Contact, u"Contact"};
  };
  Grid.ColumnAt(0).HeadingPicture = Image::SortAscending;
  Grid.ColumnsChanged();
  for (int i = 0; i < 1000; ++i) {
    Grid.AddItem(u"Anna Example " + ToDecimal(i) + u"\t+49 170 " + ToDecimal(1000000 + i * 7) +
                 u"\tanna" + ToDecimal(i) + u"@example.org\t" + ToDecimal(i % 3 + 1));
  }
}

void GalleryForm::Form_Resize() {
  const int top = Tools.Height() + 60;
  const int height = ScaleHeight() - top - Status.Height() - 60;
  const int left = 3060;
  Tree.Move({60, top, left - 110, height});
  Slider.Move({left - 50, top, 50, height});
  Shadow.Move({left - 50, top, 25, height});
  Grid.Move({left, top, ScaleWidth() - left - 60, height});
}

}  // namespace ktrv::gallery
