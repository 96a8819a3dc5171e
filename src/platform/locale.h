#pragma once

#include <string>

namespace platform {

// What the user's locale puts between the whole part and the fraction of a number, in UTF-8; never empty.
const std::string& DecimalSeparator();

}  // namespace platform
