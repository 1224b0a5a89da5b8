#include "presets/ValueText.h"

#include <charconv>
#include <cmath>

namespace ValueText
{
juce::String sixDecimals(float value)
{
    // Dividing gives the double nearest to the decimal, so no ...9999 tail appears.
    const double rounded = std::nearbyint((double) value * 1000000.0) / 1000000.0;
    auto text = juce::String(rounded, 6);
    while (text.endsWithChar('0') && !text.endsWith(".0"))
        text = text.dropLastCharacters(1);
    return text;
}

juce::String shortest(float value)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof(buffer), value);
    return juce::String(buffer, (size_t) (result.ptr - buffer));
}
} // namespace ValueText
