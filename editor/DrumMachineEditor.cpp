#include "editor/DrumMachineEditor.h"

#include "editor/FileChoosers.h"
#include "editor/GFXAnimation.h"
#include "editor/GFXButton.h"
#include "editor/GFXKnob.h"
#include "editor/GFXMultiStateButton.h"
#include "editor/NumericDisplay.h"
#include "editor/PatternNumberDisplay.h"
#include "editor/options/DrumMachineSettingsPages.h"
#include "plugin/DrumMachine.h"

namespace
{
// Where a pattern menu opens, from its button's top left.
const juce::Point<int> menuOffset{ -30, 0 };

template <typename Control>
Control* findAs(BasePluginEditor& editor, const juce::String& name)
{
    return dynamic_cast<Control*>(editor.findControl(name));
}
} // namespace

DrumMachineEditor::DrumMachineEditor(DrumMachine* pluginToUse)
    : BasePluginEditorOldStyle(pluginToUse)
    , drumMachine(pluginToUse)
{
    patternNumberDisplay = findAs<PatternNumberDisplay>(*this, "PatternNumberDisplay");
    patternNameDisplay = findAs<GFXDisplay>(*this, "PatternNameDisplay");
    tempoDisplay = findAs<NumericDisplay>(*this, "TempoDisplay");
    tempoKnob = findAs<GFXKnob>(*this, "TempoKnob");
    shuffleKnob = findAs<GFXKnob>(*this, "ShuffleKnob");
    randModeButton = findAs<GFXMultiStateButton>(*this, "PattRandModeButton");
    lengthButton = findAs<GFXMultiStateButton>(*this, "PattLengthButton");
    prevButton = findAs<GFXButton>(*this, "PattPrevButton");
    nextButton = findAs<GFXButton>(*this, "PattNextButton");

    // A track's controls are named by its instrument's name without spaces.
    for (int track = 0; track < trackCount; ++track)
    {
        const auto token = juce::String(instrumentNames[track]).removeCharacters(" ");
        activityLeds[(size_t) track] = findAs<GFXMultiStateButton>(*this, token + "ActivityLed");
        levelKnobs[(size_t) track] = findAs<GFXKnob>(*this, token + "LevelKnob");
        randThresholdKnobs[(size_t) track] = findAs<GFXKnob>(*this, token + "RandThresholdKnob");
        levelModeLeds[(size_t) track] = findAs<GFXAnimation>(*this, token + "LevelModeLed");
        selectButtons[(size_t) track] = findAs<GFXMultiStateButton>(*this, token + "SelectButton");
    }

    for (int step = 0; step < stepCount; ++step)
        stepButtons[(size_t) step] = findAs<GFXMultiStateButton>(*this, "Step" + juce::String(step + 1).paddedLeft('0', 2) + "Button");

    if (patternNameDisplay != nullptr)
        patternNameDisplay->addDisplayListener(this);

    loadMenu.addItem("Load pattern", singlePatternItem);
    loadMenu.addItem("Load pattern bank", patternBankItem);
    saveMenu.addItem("Save pattern", singlePatternItem);
    saveMenu.addItem("Save pattern bank", patternBankItem);
    loadMenu.addListener(this);
    saveMenu.addListener(this);

    drumMachine->hostClock.addListener(this);
    drumMachine->nativeClock.addListener(this);

    auto* options = getOptionsWindow();
    options->addPage("Outputs", new OutputsSettingsComponent(*this, *pluginToUse), true);
    options->addPage("Sequencer", new SequencerSettingsComponent(*pluginToUse), true);
    options->addPage("Patterns", new PatternsSettingsComponent(*this, *pluginToUse), true);
    options->addPage("Drum map", new DrumMapSettingsComponent(*this, *pluginToUse), true);
    options->getTabs().setCurrentTabIndex(0);
}

DrumMachineEditor::~DrumMachineEditor()
{
    drumMachine->hostClock.removeListener(this);
    drumMachine->nativeClock.removeListener(this);
    loadMenu.close();
    saveMenu.close();
    fileChooser.reset();

    if (patternNameDisplay != nullptr)
        patternNameDisplay->removeDisplayListener(this);
}

//==============================================================================
void DrumMachineEditor::idle()
{
    if (drumMachine->takeMidiActivity())
        if (auto* led = getMidiActivityLed())
            led->flash();

    for (int track = 0; track < trackCount; ++track)
        if (drumMachine->takeActivity(track))
            if (auto* led = activityLeds[(size_t) track])
                led->flash();
}

void DrumMachineEditor::showRunningStep(int step)
{
    for (int i = 0; i < stepCount; ++i)
        if (auto* button = stepButtons[(size_t) i])
            button->setRunningLight(i == step);
}

void DrumMachineEditor::clockStateChanged(Clock&)
{
    drumMachine->updateNativeModeReadyState();
    showRunningStep(drumMachine->getDisplayStep());
}

void DrumMachineEditor::clockTicked(Clock&)
{
    showRunningStep(drumMachine->getDisplayStep());
}

//==============================================================================
bool DrumMachineEditor::handleEditorEvent(GUIController* controller, int eventUid)
{
    if (eventUid == loadPatternsEvent || eventUid == savePatternsEvent)
    {
        // Files of patterns belong to the internal sequencer: without it the
        // buttons' Ctrl click does nothing at all.
        if (drumMachine->internalSequencer)
        {
            if (eventUid == loadPatternsEvent)
                loadMenu.show(prevButton != nullptr ? static_cast<juce::Component*>(prevButton) : this, menuOffset);
            else
                saveMenu.show(nextButton != nullptr ? static_cast<juce::Component*>(nextButton) : this, menuOffset);
        }
        return true;
    }

    return BasePluginEditorOldStyle::handleEditorEvent(controller, eventUid);
}

void DrumMachineEditor::menuItemSelected(PopupMenuEx& menu, int itemId)
{
    if (&menu == &loadMenu || &menu == &saveMenu)
        openFileChooser(&menu == &loadMenu, itemId);
}

void DrumMachineEditor::openFileChooser(bool load, int item)
{
    auto* sequencer = drumMachine->getSequencer();
    const int type = drumMachine->hostMode ? DrumMachineSeq::hostType : DrumMachineSeq::nativeType;
    const bool bank = item == patternBankItem;

    const juce::String title = load ? (bank ? "Load pattern bank" : "Load single pattern")
                                    : (bank ? "Save pattern bank" : "Save current pattern");
    const auto wildcards = bank ? sequencer->getBankFileWildcards(type) : sequencer->getPatternFileWildcards(type);

    // Asynchronous, so that the host's own loop goes on while the user
    // chooses; the mode's type is fixed at the moment the menu was used.
    FileChoosers::launch(fileChooser, *this, load ? FileChoosers::Mode::load : FileChoosers::Mode::save, title,
                         drumMachine->getLastDirectory(), wildcards,
                         [this, load, item, type](const juce::File& file)
                         { load ? loadPatternFile(file, item, type) : savePatternFile(file, item, type); });
}

bool DrumMachineEditor::loadPatternFile(const juce::File& file, int item, int type)
{
    auto* sequencer = drumMachine->getSequencer();
    const bool loaded = item == patternBankItem ? sequencer->loadBankFile(file, type) : sequencer->loadPatternFile(file, type);
    if (loaded)
    {
        drumMachine->setLastDirectory(file.getParentDirectory());
        drumMachine->updatePatternDisplays();
    }
    return loaded;
}

bool DrumMachineEditor::savePatternFile(juce::File file, int item, int type)
{
    auto* sequencer = drumMachine->getSequencer();
    const bool bank = item == patternBankItem;
    file = withDefaultExtension(file, bank ? sequencer->getBankFileExtension(type) : sequencer->getPatternFileExtension(type));

    const bool saved = bank ? sequencer->saveBankFile(file, type) : sequencer->savePatternFile(file, type);
    if (saved)
        drumMachine->setLastDirectory(file.getParentDirectory());
    return saved;
}

//==============================================================================
void DrumMachineEditor::displayTextChanged(GFXDisplay& display)
{
    if (&display != patternNameDisplay)
    {
        BasePluginEditorOldStyle::displayTextChanged(display);
        return;
    }

    drumMachine->getSequencer()->setEditedName(display.getText());
    drumMachine->updatePatternDisplays();
}
