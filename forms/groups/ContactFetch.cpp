#include "forms/groups/ContactFetch.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace ktrv::forms {

using database::EventStatus;
using database::Recordset;

namespace {

constexpr StringView kLoading = u"Loading...";
constexpr StringView kNotLoaded = u"The list could not be loaded.";
constexpr std::int64_t kBlock = 500;

std::int32_t BarValue(std::int64_t rows) {
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(rows, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

ContactFetch::ContactFetch(Services& services, BookDatabase& database, controls::FlexGrid& grid,
                           controls::Label& label, controls::ProgressBar& bar, StringView context)
    : services_(services),
      database_(database),
      grid_(grid),
      label_(label),
      bar_(bar),
      context_(context) {}

void ContactFetch::Begin() {
  Cancel();
  if (rows_) {
    // Its completion event may be posted already and must not be taken for that of the new fetch.
    rows_->FetchProgress = nullptr;
    rows_->FetchComplete = nullptr;
  }
  lost_ = false;
  bar_.SetRange(0, 100);
  bar_.SetValue(0);
  label_.SetCaption(String(kLoading));
  label_.SetVisible(true);
  bar_.SetVisible(true);
  Become(State::Loading);
}

void ContactFetch::SetTotal(std::int64_t rows) {
  if (rows > 0) bar_.SetRange(0, BarValue(rows));
}

void ContactFetch::Open(const String& query) {
  auto rows = std::make_unique<Recordset>(database_.Environment);
  rows->Location = database::CursorLocation::Client;
  rows->BackgroundFetchSize = kBlock;
  rows->FetchProgress = [this](std::int64_t progress, std::int64_t) { Progress(progress); };
  rows->FetchComplete = [this](const Error* error, EventStatus status) { Complete(error, status); };
  rows->Open(query, database_.Open(),
             {.Cursor = database::CursorType::Keyset,
              .Lock = database::LockType::Optimistic,
              .Async = true});
  rows->Disconnect();
  grid_.Bind(rows.get());
  // Destroy the previous recordset only after the grid is bound to the new one.
  rows_ = std::move(rows);
}

void ContactFetch::Fail(StringView reason) {
  bar_.SetVisible(false);
  label_.SetCaption(String(reason));
  label_.SetVisible(true);
  Become(State::Failed);
}

void ContactFetch::Cancel() {
  if (rows_) rows_->Cancel();
}

void ContactFetch::Progress(std::int64_t rows) {
  const bool taken = services_.Trap(context_, false, [&] {
    grid_.RowsArrived();
    bar_.SetValue(BarValue(rows));
    return true;
  });
  lost_ = lost_ || !taken;
}

void ContactFetch::Complete(const Error* error, EventStatus status) {
  if (status == EventStatus::Cancelled) return;  // whoever cancelled it handles the consequences
  const bool complete = services_.Trap(context_, false, [&] {
    grid_.RowsArrived();
    if (error) throw Error(*error);
    return true;
  });
  if (!complete || lost_) {
    Fail(kNotLoaded);
    return;
  }
  label_.SetVisible(false);
  bar_.SetVisible(false);
  Become(State::Complete);
}

void ContactFetch::Become(State state) {
  state_ = state;
  if (Changed) Changed();
}

}  // namespace ktrv::forms
