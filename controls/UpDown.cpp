#include "controls/UpDown.h"

#include <algorithm>

#include "controls/TextBox.h"

namespace ktrv::controls {

UpDown::UpDown(Form& form, Rectangle bounds, TextBox& buddy, Range range)
    : ControlOf(form, bounds), buddy_(buddy), range_(range) {}

void UpDown::UserSteps(std::int32_t steps) {
  if (!Enabled() || !buddy_.Enabled()) return;
  const double wanted = LeadingNumber(buddy_.Text()) + static_cast<double>(steps) * range_.Step;
  const double inside =
      std::clamp(wanted, static_cast<double>(range_.Min), static_cast<double>(range_.Max));
  buddy_.SetText(ToDecimal(static_cast<std::int64_t>(inside)));
}

}  // namespace ktrv::controls
