#include <sstream>

#include "tests/fuzz/Input.h"
#include "tool/formats/VCardReader.h"

namespace ktrv::fuzz {
namespace {

using namespace tool;

std::vector<VCard> Read(const std::string& bytes) {
  std::istringstream stream(bytes);
  TextSource source(stream, Encoding::Utf8);
  VCardReader reader(source);
  std::vector<VCard> cards;
  for (VCard card; reader.Next(card);) cards.push_back(std::move(card));
  return cards;
}

void Try(Input input) {
  std::string bytes(input.Bytes());
  // Most inputs are properties of one card.
  if (!bytes.starts_with("BEGIN")) bytes = "BEGIN:VCARD\n" + bytes + "\nEND:VCARD\n";
  const auto cards = Read(bytes);
  std::int64_t line = 0;
  for (const VCard& card : cards) {
    Demand(card.Line > line, "cards begin on lines of their own");
    line = card.Line;
    for (const VCardProperty& property : card.Properties) {
      Demand(!property.Parts().empty(), "a value has a part");
      Demand(property.Text().size() <= property.Value.size(), "escapes only grow a text");
    }
    if (HasInvalid(card.Raw) || !card.Problem.empty()) continue;
    const auto again = Read(ToUtf8(card.Raw));
    Demand(again.size() == 1 && again[0].Problem.empty(), "the card as written is read again");
    Demand(again[0].Properties.size() == card.Properties.size(), "with all its properties");
    for (std::size_t at = 0; at < card.Properties.size(); ++at) {
      DemandEqual(again[0].Properties[at].Value, card.Properties[at].Value, "and their values");
    }
  }
}

}  // namespace
}  // namespace ktrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ktrv::fuzz::Try(ktrv::fuzz::Input(data, size));
  return 0;
}
