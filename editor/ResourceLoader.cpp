#include "editor/ResourceLoader.h"

#include "plugin/Resources.h"

namespace
{
juce::File& skinDirectory()
{
    static juce::File directory;
    return directory;
}

// The file of that name in the skin folder, matched ignoring case as the
// embedded names are.
juce::File findSkinFile(const juce::String& nameAndType)
{
    const auto& directory = skinDirectory();
    const auto exact = directory.getChildFile(nameAndType);
    if (exact.existsAsFile())
        return exact;

    for (const auto& entry : juce::RangedDirectoryIterator(directory, false, "*", juce::File::findFiles))
        if (entry.getFile().getFileName().equalsIgnoreCase(nameAndType))
            return entry.getFile();

    return {};
}
} // namespace

void setSkinDirectory(const juce::File& directory)
{
    skinDirectory() = directory;
}

juce::File getSkinDirectory()
{
    return skinDirectory();
}

std::unique_ptr<juce::MemoryBlock> loadResourceData(const juce::String& nameAndType)
{
    // A name is a resource name and a type, split at the first point.
    if (nameAndType.upToFirstOccurrenceOf(".", false, false).isEmpty() || !nameAndType.containsChar('.'))
        return nullptr;

    if (skinDirectory() != juce::File())
    {
        const auto file = findSkinFile(nameAndType);
        auto block = std::make_unique<juce::MemoryBlock>();
        if (file == juce::File() || !file.loadFileAsData(*block))
            return nullptr;
        return block;
    }

    if (auto data = Resources::loadResourceData(nameAndType))
        return std::make_unique<juce::MemoryBlock>(std::move(*data));

    return nullptr;
}

bool loadResourceImage(const juce::String& nameAndType, juce::Image& image)
{
    const auto data = loadResourceData(nameAndType);
    if (data == nullptr)
        return false;

    auto decoded = juce::ImageFileFormat::loadFrom(data->getData(), data->getSize());
    if (!decoded.isValid())
        return false;

    image = decoded;
    return true;
}

juce::String loadResourceText(const juce::String& nameAndType)
{
    if (const auto data = loadResourceData(nameAndType))
        return juce::String::fromUTF8((const char*) data->getData(), (int) data->getSize());

    return {};
}
