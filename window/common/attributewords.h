// Names of what a definition of an attribute chooses from, in the language of the window.
#pragma once

#include <QString>
#include <cstdint>

namespace tarvo::window {

QString storageClassText(std::uint8_t storageClass);
QString compressionText(std::uint8_t options);

}  // namespace tarvo::window
