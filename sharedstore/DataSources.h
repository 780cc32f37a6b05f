#pragma once

#include <string>

namespace sharedstore {

// What a data source that the driver manager knows has under the name of a setting; "" for nothing.
std::string dataSourceSetting(const std::string& source, const std::string& setting);

}  // namespace sharedstore
