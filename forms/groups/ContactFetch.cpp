#include "forms/groups/ContactFetch.h"

#include <utility>

namespace ktrv::forms {

using database::Recordset;

namespace {

constexpr StringView kLoading = u"Loading...";
constexpr StringView kNotLoaded = u"The list could not be loaded.";
constexpr std::int64_t kBlock = 500;

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
  lost_ = false;
  bar_.SetRange(0, 100);
  bar_.SetValue(0);
  label_.SetCaption(String(kLoading));
  label_.SetVisible(true);
  bar_.SetVisible(true);
  Become(State::Loading);
}

void ContactFetch::SetTotal(std::int64_t rows) {
  if (rows > 0) bar_.SetRange(0, rows);
}

void ContactFetch::Open(const String& query) {
  auto rows = std::make_unique<Recordset>(database_.Environment);
  rows->Location = database::CursorLocation::Client;
  rows->BackgroundFetchSize = kBlock;
  rows->FetchProgress = [this](std::int64_t progress, std::int64_t) { Progress(progress); };
  rows->FetchComplete = [this](const Error* error, database::EventStatus) { Complete(error); };
  rows->Open(query, database_.Open(),
             {.Cursor = database::CursorType::Keyset,
              .Lock = database::LockType::Optimistic,
              .Async = true});
  rows->Disconnect();
  // The previous recordset is destroyed after the grid is bound to the new one, or has failed to.
  rows_.swap(rows);
  grid_.Bind(rows_.get());
}

void ContactFetch::Fail(StringView reason) {
  Cancel();
  bar_.SetVisible(false);
  label_.SetCaption(String(reason));
  label_.SetVisible(true);
  Become(State::Failed);
}

void ContactFetch::Cancel() {
  if (!rows_) return;
  rows_->FetchProgress = nullptr;
  rows_->FetchComplete = nullptr;
  rows_->Cancel();
}

void ContactFetch::Progress(std::int64_t rows) {
  const bool taken = services_.Trap(context_, false, [&] {
    grid_.RowsArrived();
    bar_.SetValue(rows);
    return true;
  });
  lost_ = lost_ || !taken;
}

void ContactFetch::Complete(const Error* error) {
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
