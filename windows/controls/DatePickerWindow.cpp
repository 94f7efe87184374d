#include <array>

#include "controls/DatePicker.h"
#include "windows/controls/ControlWindow.h"
#include "windows/controls/WindowFactory.h"

namespace ktrv::windows {

namespace {

using std::chrono::days;
using std::chrono::floor;
using std::chrono::local_days;
using std::chrono::year_month_day;

SYSTEMTIME ToSystemTime(DateTime value) {
  const year_month_day date(floor<days>(value));
  SYSTEMTIME time{};
  time.wYear = static_cast<WORD>(static_cast<int>(date.year()));
  time.wMonth = static_cast<WORD>(static_cast<unsigned>(date.month()));
  time.wDay = static_cast<WORD>(static_cast<unsigned>(date.day()));
  return time;
}

DateTime ToDateTime(const SYSTEMTIME& time) {
  const year_month_day date(std::chrono::year(time.wYear), std::chrono::month(time.wMonth),
                            std::chrono::day(time.wDay));
  return DateTime(local_days(date));
}

class DatePickerWindow final : public Peer<controls::DatePickerPeer> {
 public:
  DatePickerWindow(FormWindow& form, controls::DatePicker& control)
      : Peer(form, control), picker_(control) {
    Create(DATETIMEPICK_CLASSW, WS_TABSTOP | DTS_SHORTDATECENTURYFORMAT | DTS_SHOWNONE);
    SYSTEMTIME range[2] = {ToSystemTime(controls::DatePicker::kEarliest),
                           ToSystemTime(controls::DatePicker::kLatest)};
    Send(DTM_SETRANGE, GDTR_MIN | GDTR_MAX, &range[0]);
    ValueChanged();
  }
  void ValueChanged() override {
    SYSTEMTIME time{};
    if (picker_.Value()) {
      time = ToSystemTime(*picker_.Value());
      Send(DTM_SETSYSTEMTIME, GDT_VALID, &time);
      return;
    }
    // Some implementations reject GDT_NONE without a valid time.
    GetLocalTime(&time);
    Send(DTM_SETSYSTEMTIME, GDT_NONE, &time);
  }
  std::optional<LRESULT> OnNotify(NMHDR& header) override {
    if (header.code != DTN_DATETIMECHANGE) return std::nullopt;
    const auto& change = reinterpret_cast<const NMDATETIMECHANGE&>(header);
    std::optional<DateTime> picked;
    if (change.dwFlags == GDT_VALID) picked = ToDateTime(change.st);
    // The notification comes twice when the calendar closes, and also for a date out of range that
    // the form keeps but the picker cannot show.
    if (picked != picker_.Value()) picker_.UserPicks(picked);
    return 0;
  }
  AccessiblePart Describe() const override {
    std::array<wchar_t, 64> date{};
    if (picker_.Value()) {
      const SYSTEMTIME time = ToSystemTime(*picker_.Value());
      GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, &time, nullptr, date.data(),
                     static_cast<int>(date.size()));
    }
    return {.Role = ROLE_SYSTEM_DROPLIST,
            .State = picker_.Value() ? STATE_SYSTEM_CHECKED : 0,
            .Value = date.data()};
  }
  void FinishTyping() override {
    // Typed digits are committed when the field or the picker loses the focus.
    Send(WM_KILLFOCUS);
    if (GetFocus() == Handle()) Send(WM_SETFOCUS);
  }

 private:
  controls::DatePicker& picker_;
};

}  // namespace

std::unique_ptr<controls::DatePickerPeer> WindowFactory::Make(controls::DatePicker& control) {
  return std::make_unique<DatePickerWindow>(form_, control);
}

}  // namespace ktrv::windows
