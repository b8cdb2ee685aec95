// GenApi's text forms of values: integers by representation, floats by display notation, raw bytes.
#ifndef GENAPI_ENGINE_TEXTFORMS_H
#define GENAPI_ENGINE_TEXTFORMS_H

#include <GenApi/Types.h>
#include <string>
#include <vector>

namespace GenApiEngine {

// Decimal, "0x..." for hex numbers, dotted quad for IPv4 and colon-separated bytes for MAC addresses.
std::string integerToText(int64_t value, GenApi::ERepresentation representation);
// Accepts decimal, "0x" hex, IPv4 and MAC forms whatever the representation; false when unparsable.
bool textToInteger(const std::string& text, int64_t& value);

// Fixed, scientific or the shortest natural form with the given precision.
std::string floatToText(double value, GenApi::EDisplayNotation notation, int64_t precision);
bool textToFloat(const std::string& text, double& value);

// "1"/"0" out; "1", "0", "true", "false" in any letter case accepted.
bool textToBoolean(const std::string& text, bool& value);

// Register contents as "0x" followed by two hex digits a byte, in address order.
std::string bytesToText(const std::vector<uint8_t>& bytes);
bool textToBytes(const std::string& text, std::vector<uint8_t>& bytes);

}  // namespace GenApiEngine

#endif
