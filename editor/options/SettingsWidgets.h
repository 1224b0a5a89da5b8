#pragma once

#include "editor/FileChoosers.h"
#include "editor/GFXButton.h"

#include <juce_gui_basics/juce_gui_basics.h>

// The small kit of labelled widgets that the settings pages are built from.
// Each draws in the look and feel's greys with the panel's font, and each
// tells its own listeners of a change the user made; setting a value from
// code tells nobody unless asked. Message thread.

namespace SettingsLayout
{
constexpr int rowHeight = 22;
constexpr int buttonHeight = 26;
constexpr int gap = 6;
constexpr int margin = 10;
constexpr int titleHeight = 20;
// The text of the widgets and, bold, of the frames' titles.
juce::Font textFont();
juce::Font titleFont();
juce::Font noteFont();
} // namespace SettingsLayout

// A radio choice or a check box, drawn in the look and feel's colours: a
// round mark for a choice of a group, a square one for a box.
class ChoiceButton : public juce::ToggleButton
{
public:
    explicit ChoiceButton(const juce::String& text);

    void paintButton(juce::Graphics& g, bool highlighted, bool down) override;
};

// A titled frame around a group of widgets, which its owner places inside
// getContentArea().
class PanelComponent : public juce::Component
{
public:
    explicit PanelComponent(const juce::String& title = {});

    const juce::String& getTitle() const { return title; }
    juce::Rectangle<int> getContentArea() const { return contentAreaOf(getLocalBounds()); }

    // The frame and title of any titled group, and the room inside one.
    static void paintFrame(juce::Graphics& g, const juce::Component& component, const juce::String& title);
    static juce::Rectangle<int> contentAreaOf(juce::Rectangle<int> bounds);
    // The height of a frame that holds content of that height.
    static int heightFor(int contentHeight);

    void paint(juce::Graphics& g) override;

private:
    juce::String title;
};

// Children laid side by side, each at its width; a width of 0 shares the
// room that the others leave.
class ComponentRow : public juce::Component
{
public:
    explicit ComponentRow(int gap = SettingsLayout::gap);

    void addItem(juce::Component& item, int width);
    void resized() override;

private:
    struct Item
    {
        juce::Component* component;
        int width;
    };
    juce::Array<Item> items;
    int gap;
};

// A label of the panel's font and colour, for notes and row captions.
class SettingsLabel : public juce::Label
{
public:
    explicit SettingsLabel(const juce::String& text, bool note = false);
};

// A titled group of exclusive choices.
class RadioButtons : public juce::Component, public juce::Button::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void radioButtonsChanged(RadioButtons&, int newIndex) = 0;
    };

    RadioButtons(const juce::String& title, const juce::StringArray& choices);

    // -1 selects none.
    void setSelectedIndex(int index, bool notify);
    int getSelectedIndex() const { return selected; }
    int getNumChoices() const { return buttons.size(); }
    juce::ToggleButton& getButton(int index) { return *buttons[index]; }
    const juce::String& getTitle() const { return title; }

    // The height that shows the title and every choice.
    virtual int getPreferredHeight() const;

    void addListener(Listener* listener) { listeners.add(listener); }
    void removeListener(Listener* listener) { listeners.remove(listener); }

    void buttonClicked(juce::Button* button) override;
    void paint(juce::Graphics& g) override;
    void resized() override;

protected:
    // After a change of the selection, by the user or with notify.
    virtual void selectionChanged(bool notify);

private:
    juce::String title;
    juce::OwnedArray<ChoiceButton> buttons;
    int selected = -1;
    juce::ListenerList<Listener> listeners;
};

// A labelled box.
class CheckBox : public juce::Component, public juce::Button::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void checkBoxChanged(CheckBox&) = 0;
    };

    explicit CheckBox(const juce::String& text);

    void setChecked(bool shouldBeChecked, bool notify);
    bool isChecked() const { return button.getToggleState(); }
    juce::ToggleButton& getButton() { return button; }

    void addListener(Listener* listener) { listeners.add(listener); }
    void removeListener(Listener* listener) { listeners.remove(listener); }

    void buttonClicked(juce::Button* clicked) override;
    void resized() override;

private:
    ChoiceButton button;
    juce::ListenerList<Listener> listeners;
};

// A file's path with a button "[...]" that opens an asynchronous chooser
// titled "Browse", so that the host never waits on it.
class PathComponent : public juce::Component, public juce::Button::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void pathChanged(PathComponent&) = 0;
    };

    explicit PathComponent(const juce::String& wildcard);

    void setPath(const juce::String& newPath, bool notify);
    const juce::String& getPath() const { return path; }
    const juce::String& getWildcard() const { return wildcard; }

    // Opens the chooser at the path's folder; the choice comes to choose().
    void browse();
    // What the chooser does with its answer: a file becomes the path and the
    // listeners hear of it; no file (cancelled) changes nothing.
    void choose(const juce::File& file);
    juce::FileChooser* getFileChooser() const { return chooser.get(); }

    void addListener(Listener* listener) { listeners.add(listener); }
    void removeListener(Listener* listener) { listeners.remove(listener); }

    void buttonClicked(juce::Button* button) override;
    void paint(juce::Graphics& g) override;
    void resized() override;

private:
    juce::String path;
    const juce::String wildcard;
    TextButtonEx browseButton{ "[...]" };
    std::unique_ptr<juce::FileChooser> chooser;
    juce::ListenerList<Listener> listeners;
};

// Where a resource comes from when the plug-in loads: radio choices whose
// last entry is a user's file, with the path enabled only for that entry.
// hintName names the setting in the status bar's hint ("Default Presets").
class DefaultResourcesRadioButtons : public RadioButtons, public PathComponent::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // The choice or the user's file changed.
        virtual void defaultResourcesChanged(DefaultResourcesRadioButtons&) = 0;
    };

    DefaultResourcesRadioButtons(const juce::String& title, const juce::StringArray& choices,
                                 const juce::String& wildcard, const juce::String& hintName);

    // Shows a choice and a path without telling anyone.
    void setResource(int index, const juce::String& path);
    bool isUserDefined() const { return getSelectedIndex() == getNumChoices() - 1; }
    const juce::String& getPath() const { return pathComponent.getPath(); }
    PathComponent& getPathComponent() { return pathComponent; }
    const juce::String& getHintName() const { return hintName; }

    void addResourceListener(Listener* listener) { resourceListeners.add(listener); }
    void removeResourceListener(Listener* listener) { resourceListeners.remove(listener); }

    int getPreferredHeight() const override;
    void resized() override;
    void pathChanged(PathComponent&) override;

protected:
    void selectionChanged(bool notify) override;

private:
    PathComponent pathComponent;
    const juce::String hintName;
    juce::ListenerList<Listener> resourceListeners;
};

// A check box with a path that it enables: a resource loaded at start when
// the box is on. hintName names the setting in the status bar's hint.
class DefaultResourceCheckBox : public juce::Component, public CheckBox::Listener, public PathComponent::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void defaultResourceChanged(DefaultResourceCheckBox&) = 0;
    };

    DefaultResourceCheckBox(const juce::String& text, const juce::String& wildcard, const juce::String& hintName);

    // Shows a state and a path without telling anyone.
    void setResource(bool checked, const juce::String& path);
    bool isChecked() const { return checkBox.isChecked(); }
    const juce::String& getPath() const { return pathComponent.getPath(); }
    CheckBox& getCheckBox() { return checkBox; }
    PathComponent& getPathComponent() { return pathComponent; }
    const juce::String& getHintName() const { return hintName; }

    static int getPreferredHeight() { return 2 * SettingsLayout::rowHeight + SettingsLayout::gap; }

    void addListener(Listener* listener) { listeners.add(listener); }
    void removeListener(Listener* listener) { listeners.remove(listener); }

    void checkBoxChanged(CheckBox&) override;
    void pathChanged(PathComponent&) override;
    void resized() override;

private:
    CheckBox checkBox;
    PathComponent pathComponent;
    const juce::String hintName;
    juce::ListenerList<Listener> listeners;
};

// A settings page that shows the plug-in's values afresh each time the
// window or its tab comes into view, since the plug-in may have changed
// them meanwhile (a restored song, the panel's own buttons).
class OptionsPage
{
public:
    virtual ~OptionsPage() = default;
    virtual void refresh() = 0;
};

// What a page's files are: the wildcard of its choosers and the extension
// that a saved file gets when its name has none.
class FileType
{
public:
    virtual ~FileType() = default;
    virtual juce::String getFileWildcard() const = 0;
    virtual juce::String getFileExtension() const = 0;
};
