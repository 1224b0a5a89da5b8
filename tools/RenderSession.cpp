#include "RenderSession.h"

#include "editor/BasePluginEditor.h"
#include "editor/GFXButton.h"
#include "editor/GFXMultiStateButton.h"
#include "editor/PluginEditorWindow.h"
#include "editor/ResourceLoader.h"
#include "parameters/MidiControl.h"
#include "plugin/Quindrel.h"
#include "presets/XmlFiles.h"

namespace
{
// A host transport that plays from ppq 0 at a fixed tempo.
class RenderPlayHead : public juce::AudioPlayHead
{
public:
    RenderPlayHead(double tempoToUse, double sampleRateToUse)
        : tempo(tempoToUse)
        , sampleRate(sampleRateToUse)
    {
    }

    juce::Optional<PositionInfo> getPosition() const override
    {
        PositionInfo info;
        info.setIsPlaying(true);
        info.setBpm(tempo);
        info.setTimeInSamples(samplePosition);
        info.setTimeInSeconds((double) samplePosition / sampleRate);
        info.setPpqPosition((double) samplePosition / sampleRate * tempo / 60.0);
        info.setTimeSignature(juce::AudioPlayHead::TimeSignature{ 4, 4 });
        return info;
    }

    juce::int64 samplePosition = 0;

private:
    const double tempo, sampleRate;
};

constexpr int pressStepEvent = 3030;

// A bank goes to the store its type names; one without a type to the store of
// the mode the plug-in is in.
void loadPatternBank(Quindrel& plugin, const juce::File& file)
{
    const auto xml = XmlFiles::parse(file);
    auto* sequencer = plugin.getSequencer();

    int type = plugin.hostMode ? DrumMachineSeq::hostType : DrumMachineSeq::nativeType;
    if (xml != nullptr)
    {
        const auto declared = xml->getStringAttribute("type");
        if (declared == "hostPattern" || xml->hasTagName("QuindrelHostPatternBank") || xml->hasTagName("QuindrelSimplePatternBank"))
            type = DrumMachineSeq::hostType;
        else if (declared == "nativePattern" || xml->hasTagName("QuindrelNativePatternBank") || xml->hasTagName("QuindrelExtendedPatternBank"))
            type = DrumMachineSeq::nativeType;
    }

    if (xml == nullptr || !sequencer->isBankElement(*xml, type))
        throw BadInput(("not a pattern bank: " + file.getFullPathName()).toStdString());

    sequencer->readBank(*xml, type);
    plugin.updatePatternDisplays();
}

// A control map of either form; anything else is a mistake of the caller.
void loadControlMap(Quindrel& plugin, const juce::File& file)
{
    const auto xml = XmlFiles::parse(file);
    auto& midiControl = plugin.getMidiControl();

    if (xml != nullptr && MidiControl::isOlderMapXml(*xml))
        plugin.loadMidiMap(*xml);
    else if (xml == nullptr || !midiControl.canLoadMap(*xml))
        throw BadInput(("not a MIDI control map: " + file.getFullPathName()).toStdString());
    else
        midiControl.loadMap(*xml);
}

juce::int64 toSample(double seconds, double sampleRate)
{
    return (juce::int64) std::floor(seconds * sampleRate + 0.5);
}

// Delivers what waits in the message queue (asynchronous parameter updates
// among it), as a host's message loop would between two blocks.
void deliverPendingUpdates()
{
    auto delivered = std::make_shared<bool>(false);
    juce::MessageManager::callAsync([delivered]
                                    { *delivered = true; });
    while (!*delivered)
        juce::MessageManager::getInstance()->runDispatchLoopUntil(1);
}

// The first component of that name that shows inside root, or with shown
// false, the first of any, the pages of tabs not in front included; outer
// levels first, as findControl looks.
juce::Component* findComponent(juce::Component& root, const juce::String& name, bool shown)
{
    for (auto* child : root.getChildren())
        if (child->getName() == name && (!shown || child->isVisible()))
            return child;
    for (auto* child : root.getChildren())
        if (!shown || child->isVisible())
            if (auto* found = findComponent(*child, name, shown))
                return found;

    if (auto* tabs = dynamic_cast<juce::TabbedComponent*>(&root); tabs != nullptr && !shown)
        for (int i = 0; i < tabs->getNumTabs(); ++i)
            if (auto* page = tabs->getTabContentComponent(i))
                if (auto* found = page->getName() == name ? page : findComponent(*page, name, shown))
                    return found;
    return nullptr;
}

// A click as the user's hand gives it: a button's own click, or a press and
// release in the middle of anything else.
void clickComponent(juce::Component& component)
{
    if (auto* button = dynamic_cast<GFXButton*>(&component))
    {
        if (button->isEnabled())
            button->click({});
        return;
    }
    if (auto* button = dynamic_cast<juce::Button*>(&component))
    {
        button->triggerClick();
        return;
    }

    const auto centre = component.getLocalBounds().getCentre().toFloat();
    const auto now = juce::Time::getCurrentTime();
    const auto press = [&](juce::ModifierKeys mods)
    {
        return juce::MouseEvent(juce::Desktop::getInstance().getMainMouseSource(), centre, mods, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f,
                                &component, &component, now, centre, now, 1, false);
    };
    component.mouseDown(press(juce::ModifierKeys(juce::ModifierKeys::leftButtonModifier)));
    component.mouseUp(press(juce::ModifierKeys()));
}
} // namespace

RenderSession::RenderSession(const RenderOptions& optionsToUse)
    : options(optionsToUse)
{
    if (options.midiIn != juce::File())
        readMidiFile();

    if (options.script != juce::File())
    {
        script = RenderScript::read(options.script);
        if (!options.seconds.has_value())
            lengthSeconds = juce::jmax(lengthSeconds, script.getLastTime() + 2.0);
    }

    if (options.seconds.has_value())
    {
        lengthSeconds = *options.seconds;
        script.checkFitsIn(lengthSeconds);
    }
}

void RenderSession::readMidiFile()
{
    juce::MidiFile file;
    auto stream = options.midiIn.createInputStream();
    if (stream == nullptr || !file.readFrom(*stream, true))
        throw BadInput(("not a readable MIDI file: " + options.midiIn.getFullPathName()).toStdString());

    file.convertTimestampTicksToSeconds();

    double last = 0.0;
    for (int t = 0; t < file.getNumTracks(); ++t)
    {
        for (const auto* event : *file.getTrack(t))
        {
            const auto& message = event->message;
            if (message.isMetaEvent() || message.isSysEx())
                continue;
            input.push_back({ toSample(message.getTimeStamp(), options.sampleRate), message });
            last = juce::jmax(last, message.getTimeStamp());
        }
    }

    std::stable_sort(input.begin(), input.end(), [](const auto& a, const auto& b)
                     { return a.sample < b.sample; });
    lengthSeconds = last + 2.0;
}

Quindrel& RenderSession::preparePlugin()
{
    if (plugin != nullptr)
        return *plugin;

    PluginPaths paths;
    paths.settingsFile = options.settings;
    paths.writeSettings = false;
    plugin = Quindrel::createInstance(paths, options.outputType);
    // Prepared before anything is loaded, as a host whose audio already runs
    // when a song opens: a rate change puts the hi-hat filters back to their
    // fixed frequencies, so a state or preset given before it would not sound
    // as it was saved.
    plugin->setRateAndBufferSizeDetails(options.sampleRate, options.blockSize);
    plugin->prepareToPlay(options.sampleRate, options.blockSize);
    loadState();
    loadPresetFiles();
    return *plugin;
}

void RenderSession::loadPresetFiles()
{
    // Each load takes the file whole or leaves everything as it was.
    if (options.presetBank != juce::File() && !plugin->loadBankFile(options.presetBank))
        throw BadInput(("not a preset bank: " + options.presetBank.getFullPathName()).toStdString());

    if (options.presetFile != juce::File() && !plugin->loadPresetFile(options.presetFile, plugin->getCurrentPreset()))
        throw BadInput(("not a preset: " + options.presetFile.getFullPathName()).toStdString());
}

void RenderSession::loadState()
{
    if (options.state == juce::File())
        return;

    // A host's binary block, or the XML document itself.
    juce::MemoryBlock block;
    options.state.loadFileAsData(block);
    auto xml = XmlFiles::parseBinary(block.getData(), (int) block.getSize());
    const bool binary = xml != nullptr;
    if (!binary)
        xml = XmlFiles::parse(block.toString());

    // The plug-in passes over a state it cannot read; a script must hear of it.
    if (xml == nullptr || !plugin->canLoadState(*xml))
        throw BadInput(("not a state of Quindrel: " + options.state.getFullPathName()).toStdString());

    if (!binary)
        juce::AudioProcessor::copyXmlToBinary(*xml, block);
    plugin->setStateInformation(block.getData(), (int) block.getSize());
}

bool RenderSession::saveState(const juce::File& file)
{
    juce::MemoryBlock block;
    preparePlugin().getStateInformation(block);
    const auto xml = juce::AudioProcessor::getXmlFromBinary(block.getData(), (int) block.getSize());
    return xml != nullptr && XmlFiles::write(*xml, file);
}

bool RenderSession::saveSettings(const juce::File& file)
{
    const auto xml = preparePlugin().createUserSettings();
    return xml != nullptr && XmlFiles::write(*xml, file);
}

void RenderSession::listPresets(std::ostream& out)
{
    auto& instance = preparePlugin();
    if (options.preset.has_value())
        instance.selectAndApplyPreset(*options.preset);

    out << instance.getBankName() << "\n";
    for (int group = 0; group < instance.getNumGroups(); ++group)
    {
        out << "  " << instance.getGroupName(group) << " (" << instance.getGroupCount(group) << ")\n";
        for (int i = 0; i < instance.getGroupCount(group); ++i)
        {
            const int number = instance.getPresetNumber(group, i);
            out << "    " << juce::String(number).paddedLeft(' ', 3) << "  " << instance.getPresetName(number) << "\n";
        }
    }
    const int current = instance.getCurrentPreset();
    out << "current preset: " << current << "  " << instance.getPresetName(current) << "\n";
}

RenderSession::Result RenderSession::run()
{
    auto* plugin = &preparePlugin();
    script.resolve(*plugin);
    if (options.randomSeed.has_value())
        plugin->getSequencer()->randomGenerator.seed(*options.randomSeed);

    const bool patternOption = options.nativePattern.has_value() || options.hostPatternKey.has_value() || !options.patternBanks.isEmpty();
    // A saved state keeps its own modes unless the command line names one.
    const bool sequencerOn = options.sequencer.value_or(options.state != juce::File() ? plugin->internalSequencer.load()
                                                                                      : !(options.midiIn != juce::File() && !patternOption));
    plugin->setInternalSequencer(sequencerOn);

    for (const auto& bank : options.patternBanks)
        loadPatternBank(*plugin, bank);

    if (options.controlMap != juce::File())
        loadControlMap(*plugin, options.controlMap);

    // A step button in native play mode chooses the pattern, as on the panel.
    if (options.nativePattern.has_value())
    {
        plugin->setHostMode(false);
        plugin->setWriteMode(false);
        plugin->handleEvent(pressStepEvent + *options.nativePattern - 1);
    }

    auto events = input;
    if (options.hostPatternKey.has_value())
    {
        plugin->setHostMode(true);
        events.insert(events.begin(), { 0, juce::MidiMessage::noteOn(1, *options.hostPatternKey, (juce::uint8) 100) });
    }
    if (options.preset.has_value())
        events.insert(events.begin(), { 0, juce::MidiMessage::programChange(1, *options.preset) });

    // The panel is open for the whole render, as a host's window would be.
    std::unique_ptr<juce::AudioProcessorEditor> editor;
    if (options.snapshot != juce::File())
    {
        setSkinDirectory(options.skinDirectory);
        editor.reset(plugin->createEditorIfNeeded());
    }

    // Every component a click names exists from the start: windows and their
    // pages are built with the panel.
    if (auto* window = dynamic_cast<PluginEditorWindow*>(editor.get()))
    {
        const std::function<bool(const juce::String&)> hasComponent = [&panel = window->getEditor()](const juce::String& name)
        { return findComponent(panel, name, false) != nullptr; };
        script.resolveClicks(&hasComponent);
    }
    else
    {
        script.resolveClicks(nullptr);
    }

    RenderPlayHead playHead(options.tempo, options.sampleRate);
    if (options.transport)
        plugin->setPlayHead(&playHead);

    plugin->setNonRealtime(true);

    const auto totalSamples = toSample(lengthSeconds, options.sampleRate);
    const int channels = plugin->getTotalNumOutputChannels();

    Result result;
    result.audio.setSize(channels, (int) totalSamples);
    result.mainChannels = plugin->getOutputType() == DrumMachine::monoOutputs ? 1 : 2;
    juce::AudioBuffer<float> block(channels, options.blockSize);
    juce::MidiBuffer midi;
    size_t nextEvent = 0;
    // Script events go straight to the plug-in, or with the panel open, as a
    // click on a control bound to them: the panel's own events first.
    ScriptPlayer player(script, *plugin, options.sampleRate);
    if (auto* window = dynamic_cast<PluginEditorWindow*>(editor.get()))
    {
        player.fireEvent = [&panel = window->getEditor()](int uid)
        { panel.performEvent(uid); };
        player.click = [&panel = window->getEditor()](const juce::String& name)
        {
            if (auto* component = findComponent(panel, name, true))
                clickComponent(*component);
        };
    }

    const auto started = juce::Time::getMillisecondCounterHiRes();

    // The panel's lights show what sounded within one flash of the end.
    const auto lightsFrom = totalSamples - toSample(GFXMultiStateButton::flashMs / 1000.0, options.sampleRate);
    bool lightsCleared = editor == nullptr;

    for (juce::int64 start = 0; start < totalSamples; start += options.blockSize)
    {
        const int length = (int) juce::jmin((juce::int64) options.blockSize, totalSamples - start);
        block.setSize(channels, length, false, false, true);

        if (!lightsCleared && start >= lightsFrom)
        {
            for (int track = 0; track < trackCount; ++track)
                plugin->takeActivity(track);
            plugin->takeMidiActivity();
            lightsCleared = true;
        }

        midi.clear();
        while (nextEvent < events.size() && events[nextEvent].sample < start + length)
        {
            const auto& event = events[nextEvent++];
            midi.addEvent(event.message, (int) juce::jmax((juce::int64) 0, event.sample - start));
        }

        if (player.applyUntil(start + length))
            deliverPendingUpdates();

        playHead.samplePosition = start;
        plugin->processBlock(block, midi);

        for (const auto metadata : midi)
            result.generated.push_back({ start + metadata.samplePosition, metadata.getMessage() });
        for (int c = 0; c < channels; ++c)
            result.audio.copyFrom(c, (int) start, block, c, 0, length);
    }

    result.renderSeconds = (juce::Time::getMillisecondCounterHiRes() - started) / 1000.0;

    // The panel as it stands at the last block, before the clocks stop: the
    // running step and the lights of the instruments that sounded last.
    if (editor != nullptr)
    {
        // Twice: the panel's answer to an update may raise another.
        deliverPendingUpdates();
        deliverPendingUpdates();
        if (auto* window = dynamic_cast<PluginEditorWindow*>(editor.get()))
            window->getEditor().idle();
        result.snapshot = editor->createComponentSnapshot(editor->getLocalBounds(), true, 1.0f);
    }

    plugin->releaseResources();
    plugin->setPlayHead(nullptr);

    if (editor != nullptr)
    {
        editor.reset();
        setSkinDirectory({});
    }

    // Without the internal sequencer the plug-in passes its input through:
    // only the notes it generated itself count as its output.
    if (!sequencerOn)
        result.generated.clear();

    return result;
}
