#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/native/support/NoPeers.h"

namespace ktrv::tests {

using Steps = std::vector<std::string>;

/// Writes down what the window of a control is told.
template <class PeerType, class ControlType>
struct Told : PeerType {
  Told(Steps& steps, ControlType& control, std::string name)
      : Happened(steps), Shown(control), Name(std::move(name)) {}
  void Note(const std::string& what) { Happened.push_back(Name + " " + what); }

  void BoundsChanged() override {}
  void VisibleChanged() override { Note(Shown.Visible() ? "shown" : "hidden"); }
  void EnabledChanged() override {}
  void TextChanged() override {}
  void FocusRequested() override {}
  void RefreshRequested() override {}

  Steps& Happened;
  ControlType& Shown;
  std::string Name;
};

struct ToldGrid final : Told<controls::FlexGridPeer, controls::FlexGrid> {
  using Told::Told;
  void ColumnsChanged() override {}
  void RowsChanged() override { Note("rows"); }
  void RowsAppended() override {}
  void HeadingChanged(int column) override {
    const controls::GridColumn& heading = Shown.ColumnAt(column);
    if (heading.HeadingPicture != controls::Image::None) Note("sorted by " + ToUtf8(heading.Key));
  }
  void SelectionChanged() override {}
  void RowShown(int row) override { Note("row " + std::to_string(row) + " in sight"); }
  void RedrawChanged() override { Note(Shown.Redraw() ? "painted" : "held"); }
};

struct ToldProgress final : Told<controls::ProgressBarPeer, controls::ProgressBar> {
  using Told::Told;
  void ValueChanged() override {}
  void PlacedIn(controls::StatusBar&, int panel) override { Note("in " + std::to_string(panel)); }
};

struct ToldStatus final : Told<controls::StatusBarPeer, controls::StatusBar> {
  using Told::Told;
  void PanelsChanged() override { Note(std::to_string(Shown.PanelCount())); }
  void PanelTextChanged(int panel) override {
    Note(std::to_string(panel) + ": " + ToUtf8(Shown.PanelAt(panel).Text));
  }
};

struct ToldPicture final : Told<controls::PictureBoxPeer, controls::PictureBox> {
  using Told::Told;
  void BoundsChanged() override { Note("placed"); }
  void BackColorChanged() override {}
};

/// Makes windows for some controls only.
struct ToldPeers final : NoPeers {
  explicit ToldPeers(Steps& steps) : Happened(steps) {}
  using NoPeers::Make;
  Window<controls::FlexGridPeer> Make(controls::FlexGrid& grid) override {
    return std::make_unique<ToldGrid>(Happened, grid, "grid");
  }
  Window<controls::PictureBoxPeer> Make(controls::PictureBox& picture) override {
    return std::make_unique<ToldPicture>(Happened, picture, "splitter");
  }
  Window<controls::ProgressBarPeer> Make(controls::ProgressBar& bar) override {
    return std::make_unique<ToldProgress>(Happened, bar, "bar");
  }
  Window<controls::StatusBarPeer> Make(controls::StatusBar& bar) override {
    return std::make_unique<ToldStatus>(Happened, bar, "panels");
  }

  Steps& Happened;
};

}  // namespace ktrv::tests
