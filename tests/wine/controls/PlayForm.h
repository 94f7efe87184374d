#pragma once

#include "controls/CheckBox.h"
#include "controls/ComboBox.h"
#include "controls/CommandButton.h"
#include "controls/DatePicker.h"
#include "controls/FlexGrid.h"
#include "controls/Form.h"
#include "controls/Frame.h"
#include "controls/Label.h"
#include "controls/ProgressBar.h"
#include "controls/StatusBar.h"
#include "controls/TextBox.h"
#include "controls/TreeView.h"
#include "controls/UpDown.h"

namespace ktrv::windows {

/// A form with one control of each kind that tests play with.
class PlayForm final : public controls::Form {
 public:
  explicit PlayForm(controls::Screen& screen)
      : Form(screen, {u"Play", 9000, 6000, true, 3000, 2000}) {
    Tree.Add(u"", u"SHARED", u"Shared Contacts", 1);
    Tree.Add(u"SHARED", u"SFLD1", u"Customers", 1);
    Tree.Add(u"SHARED", u"SFLD2", u"Suppliers", 1);
    Tree.SetExpanded(Tree.At(1), true);
    Grid.Reset(1, 3);
    Grid.ColumnAt(0) = {.Key = u"ID", .Heading = u"Id", .Hidden = true};
    Grid.ColumnAt(1) = {.Key = u"NAME", .Heading = u"Name", .Width = 3000};
    Grid.ColumnAt(2) = {.Key = u"MOBILENO", .Heading = u"Mobile No", .Width = 2000};
    Grid.ColumnsChanged();
    for (int i = 1; i <= 5; ++i) {
      Grid.AddItem(ToDecimal(i) + u"\tName " + ToDecimal(i) + u"\t0" + ToDecimal(i));
    }
    Status.AddPanel({.Text = u"Ready", .Width = 2000, .Springs = true});
    Status.AddPanel({.Width = 3000});
  }

  controls::TreeView Tree{*this, {0, 0, 3000, 3000}, {controls::Image::Folder}};
  controls::FlexGrid Grid{*this, {3000, 0, 6000, 3000}};
  controls::Label Caption{*this, {0, 3100, 1000, 300}, u"&Number"};
  controls::TextBox Number{*this, {1000, 3100, 1500, 300}, 5};
  controls::UpDown Arrows{*this, {2500, 3100, 240, 300}, Number, {0, 10, 1}};
  controls::CheckBox Check{*this, {0, 3600, 3000, 300}, u"Shared"};
  controls::ComboBox Combo{*this, {3000, 3600, 2000, 300}};
  controls::Frame Frame{*this, {5400, 3400, 2200, 600}, u"Birthday"};
  controls::DatePicker Date{*this, {5500, 3600, 2000, 300}};
  controls::CommandButton Ok{
      *this, {0, 4200, 1200, 400}, u"&Save", controls::CommandButton::Key::Enter};
  controls::CommandButton Cancel{
      *this, {1500, 4200, 1200, 400}, u"Cancel", controls::CommandButton::Key::Escape};
  controls::StatusBar Status{*this};
  controls::ProgressBar Progress{*this, {0, 0, 900, 200}};
};

}  // namespace ktrv::windows
