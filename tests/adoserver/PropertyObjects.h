#pragma once

#include <utility>
#include <vector>

#include "tests/adoserver/ServerObject.h"

namespace ktrv::adoserver {

class PropertyObject final : public ServerObject {
 public:
  static const IID kId;
  PropertyObject(const String& name, const String& value);

 protected:
  const IID& OwnId() const override { return kId; }
};

/// What a provider tells of itself, by name.
class PropertiesObject final : public ServerObject {
 public:
  static const IID kId;
  explicit PropertiesObject(std::vector<std::pair<String, String>> values);

 protected:
  const IID& OwnId() const override { return kId; }
};

}  // namespace ktrv::adoserver
