#include "Resources.h"

#include <QuindrelBinaryData.h>

namespace
{
// Resources are stored under their original file name, which is "name.type".
const char* findResource(const juce::String& nameAndType, int& size)
{
    for (int i = 0; i < QuindrelBinaryData::namedResourceListSize; ++i)
    {
        const auto* resourceName = QuindrelBinaryData::namedResourceList[i];
        const auto original = juce::String(QuindrelBinaryData::getNamedResourceOriginalFilename(resourceName));

        if (original.equalsIgnoreCase(nameAndType))
            return QuindrelBinaryData::getNamedResource(resourceName, size);
    }

    size = 0;
    return nullptr;
}
} // namespace

namespace Resources
{
std::optional<juce::MemoryBlock> loadResourceData(const juce::String& nameAndType)
{
    int size = 0;
    if (const auto* data = findResource(nameAndType, size))
        return juce::MemoryBlock(data, (size_t) size);

    return std::nullopt;
}

juce::String loadResourceText(const juce::String& nameAndType)
{
    int size = 0;
    if (const auto* data = findResource(nameAndType, size))
        return juce::String::fromUTF8(data, size);

    return {};
}

bool loadResourceImage(const juce::String& nameAndType, juce::Image& image)
{
    int size = 0;
    if (const auto* data = findResource(nameAndType, size))
    {
        image = juce::ImageFileFormat::loadFrom(data, (size_t) size);
        return image.isValid();
    }

    return false;
}
} // namespace Resources
