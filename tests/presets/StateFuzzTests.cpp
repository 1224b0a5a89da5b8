// Thousands of damaged states, as a corrupt song file or a careless host
// might give them: none may crash the plug-in or make its output non-finite,
// and a good state afterwards still comes back whole.

#include "StateSupport.h"

#include <cmath>

using namespace StateSupport;

namespace
{
void collect(juce::XmlElement& element, std::vector<juce::XmlElement*>& all)
{
    all.push_back(&element);
    for (auto* child : element.getChildIterator())
        collect(*child, all);
}

// A state small enough to restore thousands of times, with every kind of
// element: a bank of four presets, two host patterns and a native one.
std::unique_ptr<juce::XmlElement> compactState()
{
    auto plugin = makePlugin();
    makeBusy(*plugin);
    const auto block = stateOf(*plugin);
    auto xml = juce::AudioProcessor::getXmlFromBinary(block.getData(), (int) block.getSize());

    auto* bank = xml->getChildByName("PresetsState")->getChildByName("PresetBank");
    while (bank->getNumChildElements() > 1)
        bank->removeChildElement(bank->getChildElement(1), true);
    auto* group = bank->getChildElement(0);
    while (group->getNumChildElements() > 4)
        group->removeChildElement(group->getChildElement(4), true);

    for (auto* patternBank : xml->getChildByName("PatternsState")->getChildIterator())
        while (patternBank->getNumChildElements() > 2)
            patternBank->removeChildElement(patternBank->getChildElement(0), true);
    return xml;
}

class Mutator
{
public:
    explicit Mutator(const juce::XmlElement& baseToUse)
        : base(baseToUse)
        , baseText(base.toString(juce::XmlElement::TextFormat().singleLine()))
    {
    }

    // A damaged block and what was done to it.
    juce::MemoryBlock next(juce::String& what)
    {
        switch (random.nextInt(7))
        {
            case 0:
            {
                what = "truncated text";
                return rawBlock(baseText.substring(0, random.nextInt(baseText.length())));
            }
            case 1:
            {
                what = "flipped bytes";
                juce::MemoryBlock block;
                juce::AudioProcessor::copyXmlToBinary(base, block);
                for (int n = 1 + random.nextInt(20); --n >= 0;)
                    block[(size_t) random.nextInt((int) block.getSize())] = (char) random.nextInt(256);
                return block;
            }
            case 2:
            {
                what = "damaged header";
                juce::MemoryBlock block;
                juce::AudioProcessor::copyXmlToBinary(base, block);
                const juce::uint32 lengths[] = { 0, 1, 0x7fffffffu, 0x80000000u, 0xffffffffu, (juce::uint32) block.getSize() };
                const auto length = juce::ByteOrder::swapIfBigEndian(lengths[random.nextInt(6)]);
                block.copyFrom(&length, 4, 4);
                if (random.nextBool())
                    block.setSize((size_t) random.nextInt((int) block.getSize()));
                return block;
            }
            case 3:
            {
                what = "deep nesting";
                const int depth = 100 + random.nextInt(60000);
                const auto nest = juce::String::repeatedString("<a>", depth) + juce::String::repeatedString("</a>", depth);
                const int at = baseText.indexOf(random.nextBool() ? "<PresetsState" : "<QDState");
                return rawBlock(baseText.substring(0, at) + nest + baseText.substring(at));
            }
            default:
            {
                auto copy = std::make_unique<juce::XmlElement>(base);
                for (int n = 1 + random.nextInt(8); --n >= 0;)
                {
                    // Gathered afresh: a mutation may have dropped elements.
                    std::vector<juce::XmlElement*> all;
                    collect(*copy, all);
                    mutateElement(*all[(size_t) random.nextInt((int) all.size())], what);
                }
                juce::MemoryBlock block;
                juce::AudioProcessor::copyXmlToBinary(*copy, block);
                return block;
            }
        }
    }

private:
    static juce::MemoryBlock rawBlock(const juce::String& text)
    {
        juce::MemoryBlock block;
        juce::MemoryOutputStream out(block, false);
        out.writeInt(0x21324356); // the framework's mark of an XML block
        out.writeInt((int) text.getNumBytesAsUTF8() + 1);
        out << text;
        out.writeByte(0);
        return block;
    }

    // Wrong types and out-of-range numbers in attributes, and children
    // multiplied, dropped or renamed.
    void mutateElement(juce::XmlElement& element, juce::String& what)
    {
        static const char* const wrongValues[] = { "", "x", "-1", "-2147483649", "2147483648", "99999999999999999999", "1e308",
                                                   "-1e308", "nan", "inf", "0x10", "1.5", "on", "AB", "fillIn", "\xc3\xa9", " 7 " };
        const int attributes = element.getNumAttributes();
        const int choice = random.nextInt(4);
        if (choice <= 1 && attributes > 0)
        {
            what = "wrong attribute";
            const auto name = element.getAttributeName(random.nextInt(attributes));
            element.setAttribute(name, random.nextInt(10) == 0 ? juce::String::repeatedString("9", 5000)
                                                               : juce::String::fromUTF8(wrongValues[random.nextInt((int) std::size(wrongValues))]));
        }
        else if (choice == 2 && element.getNumChildElements() > 0)
        {
            what = "children multiplied or dropped";
            auto* child = element.getChildElement(random.nextInt(element.getNumChildElements()));
            if (random.nextBool())
                element.removeChildElement(child, true);
            else
                for (int n = random.nextInt(300); --n >= 0;)
                    element.addChildElement(new juce::XmlElement(*child));
        }
        else
        {
            what = "renamed element";
            static const char* const tags[] = { "PresetBank", "PresetGroup", "Preset", "PatternBank", "Pattern", "param", "QDState",
                                                "InternalSequencer", "DrumMap", "assign", "MidiCCMap", "VariationA", "Part2", "BD" };
            element.setTagName(tags[random.nextInt((int) std::size(tags))]);
        }
    }

    const juce::XmlElement& base;
    const juce::String baseText;
    juce::Random random{ 20240611 };
};
} // namespace

TEST(PresetsStateFuzz, DamagedStatesNeverCrashOrSilenceTheOutputWithNaN)
{
    const auto base = compactState();
    Mutator mutator(*base);
    PluginTestHost host(48000.0, 64);
    auto& plugin = *host.plugin;
    host.playHead.playing = true;

    constexpr int rounds = 2000;
    for (int round = 0; round < rounds; ++round)
    {
        juce::String what;
        const auto block = mutator.next(what);
        restore(plugin, block);

        const auto audio = host.render(64, { PluginTestHost::noteOn(0, 36 + round % 40, 127), { 1, juce::MidiMessage::programChange(1, round % 128) } });
        bool finite = true;
        for (int c = 0; c < audio.getNumChannels(); ++c)
            for (int i = 0; i < audio.getNumSamples(); ++i)
                finite = finite && std::isfinite(audio.getSample(c, i));
        ASSERT_TRUE(finite) << "round " << round << ": " << what;
    }

    // The instance is whole: a good state, one that names every slot, restores to the byte.
    auto reference = makePlugin();
    makeBusy(*reference);
    const auto full = stateOf(*reference);
    restore(plugin, full);
    EXPECT_TRUE(textOf(stateOf(plugin)) == textOf(full));
}
