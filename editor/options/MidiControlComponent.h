#pragma once

#include "editor/AlertWindow.h"
#include "editor/options/SettingsWidgets.h"
#include "parameters/MidiControl.h"

class BasePlugin;

// The "Midi Control" page of the options window: the controllers that drive
// parameters, one row an assignment, with buttons to delete one, clear all,
// load and save a map, the learn mode's box (in step with the panel's learn
// button both ways) and the map loaded at start. Every change of the map,
// from learn, a file or a restored song, refreshes the table. The file
// choosers are asynchronous. Message thread.
class MidiControlComponent : public juce::Component,
                             public juce::Button::Listener,
                             public CheckBox::Listener,
                             public DefaultResourceCheckBox::Listener,
                             public MidiControl::Listener,
                             public K44::AlertWindow::Caller,
                             public FileType,
                             public OptionsPage
{
public:
    static constexpr int clearAnswerYes = 1, clearAnswerNo = 0;

    // The assignments, in controller order: "CC" and "Parameter".
    class ListComponent : public juce::ListBox, private juce::ListBoxModel
    {
    public:
        static constexpr int controllerColumnWidth = 64;

        explicit ListComponent(MidiControl& midiControl);

        // Reads the map again; the selected controller stays selected if it
        // is still assigned.
        void refreshRows();
        int getSelectedController() const;
        int getNumAssignments() const { return rows.size(); }
        void selectController(int controller);
        int getController(int row) const { return juce::isPositiveAndBelow(row, rows.size()) ? rows.getReference(row).controller : -1; }
        juce::String getParameterName(int row) const { return juce::isPositiveAndBelow(row, rows.size()) ? rows.getReference(row).name : juce::String(); }

        std::function<void()> onSelectionChanged;

    private:
        int getNumRows() override { return rows.size(); }
        void paintListBoxItem(int row, juce::Graphics& g, int width, int height, bool selected) override;
        void selectedRowsChanged(int lastRowSelected) override;

        struct Row
        {
            int controller;
            juce::String name;
        };

        MidiControl& midiControl;
        juce::Array<Row> rows;
        bool refreshing = false;
    };

    explicit MidiControlComponent(BasePlugin& plugin);
    ~MidiControlComponent() override;

    // FileType: maps are written as ".qdccmap"; the load chooser also takes
    // the older extensions.
    juce::String getFileWildcard() const override;
    juce::String getFileExtension() const override;

    // OptionsPage
    void refresh() override;

    // What the choosers do with the chosen file. A saved name without an
    // extension gets the map's; each remembers the file's folder.
    bool loadMap(const juce::File& file);
    bool saveMap(const juce::File& file);

    ListComponent& getList() { return list; }
    CheckBox& getLearnBox() { return learnBox; }
    DefaultResourceCheckBox& getDefaultMapBox() { return defaultMapBox; }
    K44::AlertWindow& getClearAlert() { return clearAlert; }
    juce::FileChooser* getFileChooser() const { return chooser.get(); }

    // juce::Button::Listener
    void buttonClicked(juce::Button* button) override;
    // CheckBox::Listener: the learn box sets learn mode as the panel's button does.
    void checkBoxChanged(CheckBox& box) override;
    // DefaultResourceCheckBox::Listener: the map loaded at start.
    void defaultResourceChanged(DefaultResourceCheckBox& box) override;
    // MidiControl::Listener
    void midiMapChanged(MidiControl&) override;
    void midiLearnChanged(MidiControl&) override;
    // K44::AlertWindow::Caller: "Clear All" answered.
    void alertWindowClosed(K44::AlertWindow&, int result) override;

    void paint(juce::Graphics& g) override;
    void resized() override;

private:
    void updateButtons();
    void openChooser(bool save);
    void rememberFolder(const juce::File& file);
    juce::File getStartFolder() const;

    BasePlugin& plugin;
    MidiControl& midiControl;
    const juce::String loadWildcard, extension;
    juce::File lastFolder;

    ListComponent list;
    TextButtonEx deleteButton{ "Delete Assign", "Delete selected assignation" };
    TextButtonEx clearButton{ "Clear All", "Clear all map" };
    TextButtonEx loadButton{ "Load Map", "Open map" };
    TextButtonEx saveButton{ "Save Map", "Save current map" };
    CheckBox learnBox{ "Midi Learn mode" };
    SettingsLabel learnNote;
    DefaultResourceCheckBox defaultMapBox;
    SettingsLabel defaultMapNote;
    K44::AlertWindow clearAlert;
    std::unique_ptr<juce::FileChooser> chooser;
};
