// Thousands of damaged states, as a corrupt song file or a careless host
// might give them: none may crash the plug-in or make its output non-finite,
// and a good state afterwards still comes back whole.

#include "StateSupport.h"

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

// A damaged block of the base state, and what was done to it: truncated text,
// flipped bytes, a damaged header, deep nesting, or elements changed inside
// (wrong types and out-of-range numbers in attributes, children multiplied,
// dropped or renamed).
juce::MemoryBlock damaged(const juce::XmlElement& base, juce::Random& random, juce::String& what)
{
    const auto text = base.toString(juce::XmlElement::TextFormat().singleLine());
    juce::MemoryBlock block;
    const int kind = random.nextInt(7);
    if (kind == 0 || kind == 3)
    {
        const int depth = 100 + random.nextInt(60000), at = text.indexOf(random.nextBool() ? "<PresetsState" : "<QDState");
        const auto nest = juce::String::repeatedString("<a>", depth) + juce::String::repeatedString("</a>", depth);
        const auto body = kind == 0 ? text.substring(0, random.nextInt(text.length())) : text.substring(0, at) + nest + text.substring(at);
        what = kind == 0 ? "truncated text" : "deep nesting";
        juce::MemoryOutputStream out(block, false);
        out.writeInt(0x21324356); // the framework's mark of an XML block
        out.writeInt((int) body.getNumBytesAsUTF8() + 1);
        out << body;
        out.writeByte(0);
        return block;
    }
    auto copy = std::make_unique<juce::XmlElement>(base);
    for (int n = kind <= 2 ? 0 : 1 + random.nextInt(8); --n >= 0;)
    {
        std::vector<juce::XmlElement*> all; // gathered afresh: a change may have dropped elements
        collect(*copy, all);
        auto& element = *all[(size_t) random.nextInt((int) all.size())];
        const int choice = random.nextInt(4);
        if (choice <= 1 && element.getNumAttributes() > 0)
        {
            static const char* const wrongValues[] = { "", "x", "-1", "-2147483649", "2147483648", "99999999999999999999", "1e308",
                                                       "-1e308", "nan", "inf", "0x10", "1.5", "on", "AB", "fillIn", "\xc3\xa9", " 7 " };
            what = "wrong attribute";
            element.setAttribute(element.getAttributeName(random.nextInt(element.getNumAttributes())),
                                 random.nextInt(10) == 0 ? juce::String::repeatedString("9", 5000) : juce::String::fromUTF8(wrongValues[random.nextInt((int) std::size(wrongValues))]));
        }
        else if (choice == 2 && element.getNumChildElements() > 0)
        {
            what = "children multiplied or dropped";
            auto* child = element.getChildElement(random.nextInt(element.getNumChildElements()));
            if (random.nextBool())
                element.removeChildElement(child, true);
            else
                for (int i = random.nextInt(300); --i >= 0;)
                    element.addChildElement(new juce::XmlElement(*child));
        }
        else
        {
            static const char* const tags[] = { "PresetBank", "PresetGroup", "Preset", "PatternBank", "Pattern", "param", "QDState",
                                                "InternalSequencer", "DrumMap", "assign", "MidiCCMap", "VariationA", "Part2", "BD" };
            what = "renamed element";
            element.setTagName(tags[random.nextInt((int) std::size(tags))]);
        }
    }
    juce::AudioProcessor::copyXmlToBinary(*copy, block);
    if (kind == 1)
    {
        what = "flipped bytes";
        for (int n = 1 + random.nextInt(20); --n >= 0;)
            block[(size_t) random.nextInt((int) block.getSize())] = (char) random.nextInt(256);
    }
    if (kind == 2)
    {
        what = "damaged header";
        const juce::uint32 lengths[] = { 0, 1, 0x7fffffffu, 0x80000000u, 0xffffffffu, (juce::uint32) block.getSize() };
        const auto length = juce::ByteOrder::swapIfBigEndian(lengths[random.nextInt(6)]);
        block.copyFrom(&length, 4, 4);
        if (random.nextBool())
            block.setSize((size_t) random.nextInt((int) block.getSize()));
    }
    return block;
}
} // namespace

TEST(PresetsStateFuzz, DamagedStatesNeverCrashOrSilenceTheOutputWithNaN)
{
    const auto base = compactState();
    juce::Random random(20240611);
    PluginTestHost host(48000.0, 64);
    auto& plugin = *host.plugin;
    host.playHead.playing = true;

    constexpr int rounds = 2000;
    for (int round = 0; round < rounds; ++round)
    {
        juce::String what;
        restore(plugin, damaged(*base, random, what));
        const auto audio = host.render(64, { PluginTestHost::noteOn(0, 36 + round % 40, 127), { 1, juce::MidiMessage::programChange(1, round % 128) } });
        ASSERT_EQ(PluginTestHost::badSamples(audio), 0) << "round " << round << ": " << what;
    }

    // The instance is whole: a good state, one that names every slot, restores to the byte.
    auto reference = makePlugin();
    makeBusy(*reference);
    const auto full = stateOf(*reference);
    restore(plugin, full);
    EXPECT_TRUE(textOf(stateOf(plugin)) == textOf(full));
}
