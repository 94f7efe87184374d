#include "forms/groups/DialogList.h"

#include "forms/groups/ContactRow.h"

namespace ktrv::forms {
namespace {

constexpr StringView kLoading = u"Loading...";
constexpr StringView kNotLoaded = u"The list could not be loaded.";
constexpr std::int64_t kBlock = 500;

}  // namespace

DialogList::DialogList(Services& services, BookDatabase& database, Display display,
                       StringView context)
    : BackgroundList(database), services_(services), display_(display), context_(context) {}

void DialogList::Begin() {
  Cancel();
  state_ = State::Loading;  // even if the display fails
  lost_ = false;
  display_.Bar.SetRange(0, 100);
  display_.Bar.SetValue(0);
  display_.Loading.SetCaption(String(kLoading));
  display_.Loading.SetVisible(true);
  display_.Bar.SetVisible(true);
  Become(State::Loading);
}

void DialogList::SetTotal(std::int64_t rows) {
  if (rows > 0) display_.Bar.SetRange(0, rows);
}

void DialogList::Open(const String& query) {
  database_.Open();
  const auto former = Fetch(query, kBlock);
  display_.Grid.Bind(rows_.get());
}

void DialogList::ShowFailure(StringView reason) {
  Cancel();
  display_.Bar.SetVisible(false);
  display_.Loading.SetCaption(String(reason));
  display_.Loading.SetVisible(true);
  Become(State::Failed);
}

void DialogList::FetchProgress(std::int64_t rows) {
  const bool taken = services_.Trap(context_, false, [&] {
    display_.Grid.RowsArrived();
    Arrived();
    ContactColumns::ShowNoOrder(display_.Grid);
    display_.Bar.SetValue(rows);
    return true;
  });
  lost_ = lost_ || !taken;
}

void DialogList::FetchComplete(const Error* error) {
  if (error) services_.Trap(context_, [&] { throw Error(*error); });
  if (error || lost_) return ShowFailure(kNotLoaded);
  display_.Loading.SetVisible(false);
  display_.Bar.SetVisible(false);
  Become(State::Complete);
}

void DialogList::Become(State state) {
  state_ = state;
  if (state == State::Complete) Loaded();
  if (Changed) Changed();
}

}  // namespace ktrv::forms
