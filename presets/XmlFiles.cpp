#include "presets/XmlFiles.h"

namespace XmlFiles
{
bool nestsDeeperThan(const juce::String& text, int limit)
{
    int depth = 0;
    auto p = text.getCharPointer();

    while (!p.isEmpty())
    {
        if (p.getAndAdvance() != '<')
            continue;

        const auto next = *p;
        if (next == '/')
        {
            --depth;
            continue;
        }
        if (next == '?' || next == '!')
            continue; // a declaration, comment or CDATA opens no element

        if (++depth > limit)
            return true;

        // To the end of the tag, minding quoted values; "/>" closes it at once.
        juce::juce_wchar quote = 0, last = 0;
        while (!p.isEmpty())
        {
            const auto c = p.getAndAdvance();
            if (quote != 0)
            {
                if (c == quote)
                    quote = 0;
            }
            else if (c == '"' || c == '\'')
            {
                quote = c;
            }
            else if (c == '>')
            {
                if (last == '/')
                    --depth;
                break;
            }
            last = c;
        }
    }
    return false;
}

std::unique_ptr<juce::XmlElement> parse(const juce::String& text)
{
    if (nestsDeeperThan(text, maxNesting))
        return {};
    return juce::parseXML(text);
}

std::unique_ptr<juce::XmlElement> parse(const juce::File& file)
{
    if (!file.existsAsFile())
        return {};
    return parse(file.loadFileAsString());
}

std::unique_ptr<juce::XmlElement> parseBinary(const void* data, int sizeInBytes)
{
    // The framework's layout: a mark, the text's length, the text.
    constexpr juce::uint32 xmlMark = 0x21324356;
    if (data == nullptr || sizeInBytes <= 8 || juce::ByteOrder::littleEndianInt(data) != xmlMark)
        return {};

    const auto length = (int) juce::ByteOrder::littleEndianInt(juce::addBytesToPointer(data, 4));
    if (length <= 0)
        return {};

    return parse(juce::String::fromUTF8(static_cast<const char*>(data) + 8, juce::jmin(sizeInBytes - 8, length)));
}

bool write(const juce::XmlElement& xml, const juce::File& file)
{
    juce::XmlElement::TextFormat format;
    format.newLineChars = "\n";
    return xml.writeTo(file, format);
}
} // namespace XmlFiles
