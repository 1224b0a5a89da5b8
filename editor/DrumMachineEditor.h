#pragma once

#include "editor/BasePluginEditorOldStyle.h"
#include "editor/PopupMenuEx.h"
#include "parameters/InstrumentNames.h"
#include "sequencer/Clock.h"

#include <array>

class DrumMachine;
class GFXButton;
class GFXKnob;
class NumericDisplay;
class PatternNumberDisplay;

// The editor of the drum machines. It knows the panel's named controls and
// the instruments' rows of them, flashes the activity lights from the
// plug-in's flags on the editor's timer, shows the running step from the
// clocks, and owns the pattern load and save menus with their file choosers.
// Everything else reaches it as parameters. Message thread.
class DrumMachineEditor : public BasePluginEditorOldStyle, public Clock::Listener, public PopupMenuEx::Listener
{
public:
    static constexpr int loadPatternsEvent = 3028, savePatternsEvent = 3029;
    // The rows of both pattern menus.
    static constexpr int singlePatternItem = 0, patternBankItem = 1;
    static constexpr int stepCount = 16;

    // The options pages this editor adds after "Presets".
    class OutputsSettingsComponent;
    class SequencerSettingsComponent;
    class PatternsSettingsComponent;
    class DrumMapSettingsComponent;

    explicit DrumMachineEditor(DrumMachine* plugin);
    ~DrumMachineEditor() override;

    // The timer's look at the audio thread's flags: one flash for any number
    // of triggers since the last look.
    void idle() override;

    // The running light on the step key of that index, off on all others
    // (all of them for -1); only keys that change repaint.
    void showRunningStep(int step);

    // Clock::Listener
    void clockStateChanged(Clock&) override;
    void clockTicked(Clock&) override;

    // PopupMenuEx::Listener: a row of a pattern menu opens its file chooser.
    void menuItemSelected(PopupMenuEx& menu, int itemId) override;

    // GFXDisplayListener: a typed pattern name names the edited pattern.
    void displayTextChanged(GFXDisplay& display) override;

    // What the file choosers do with a chosen file, for the pattern type of
    // the mode (host or native). A saved file without an extension gets the
    // sequencer's; the file's folder is remembered for the next chooser.
    bool loadPatternFile(const juce::File& file, int item, int type);
    bool savePatternFile(juce::File file, int item, int type);

    PopupMenuEx& getLoadMenu() { return loadMenu; }
    PopupMenuEx& getSaveMenu() { return saveMenu; }
    // The chooser last opened, while it lives.
    juce::FileChooser* getFileChooser() const { return fileChooser.get(); }
    DrumMachine* getDrumMachine() const { return drumMachine; }

protected:
    bool handleEditorEvent(GUIController* controller, int eventUid) override;

    DrumMachine* const drumMachine;

    PatternNumberDisplay* patternNumberDisplay = nullptr;
    GFXDisplay* patternNameDisplay = nullptr;
    NumericDisplay* tempoDisplay = nullptr;
    GFXKnob* tempoKnob = nullptr;
    GFXKnob* shuffleKnob = nullptr;
    GFXMultiStateButton* randModeButton = nullptr;
    GFXMultiStateButton* lengthButton = nullptr;
    GFXButton* prevButton = nullptr;
    GFXButton* nextButton = nullptr;

    // By track, the accent last; null where the skin has no such control.
    std::array<GFXMultiStateButton*, trackCount> activityLeds{};
    std::array<GFXKnob*, trackCount> levelKnobs{};
    std::array<GFXKnob*, trackCount> randThresholdKnobs{};
    std::array<GFXAnimation*, trackCount> levelModeLeds{};
    std::array<GFXMultiStateButton*, trackCount> selectButtons{};
    std::array<GFXMultiStateButton*, stepCount> stepButtons{};

private:
    void openFileChooser(bool load, int item);

    PopupMenuEx loadMenu, saveMenu;
    std::unique_ptr<juce::FileChooser> fileChooser;
};
