#pragma once

#include "editor/AboutWindow.h"
#include "editor/DefaultLookAndFeel.h"
#include "editor/GUIController.h"
#include "editor/PseudoModalComponent.h"
#include "editor/StatusBar.h"
#include "editor/options/OptionsWindow.h"
#include "editor/options/SettingsWidgets.h"
#include "parameters/MidiControl.h"

class BasePlugin;
class GFXAnimation;
class GFXMultiStateButton;
class GFXPanel;
class MidiControlComponent;

// The front panel, built from data: one XML skin whose elements each become
// a bitmap control at a fixed place, bound by name to a parameter and to
// events. Without a skin it shows a grid of plain controls, one per host
// parameter. Under the panel runs the status bar; windows, menus and alerts
// open inside the panel. Every parameter reaches the panel through its
// asynchronous listeners. Message thread only.
class BasePluginEditor : public juce::Component,
                         public Parameter::Listener,
                         public GUIController::Listener,
                         public MidiControl::Listener,
                         public DefaultResourceCheckBox::Listener,
                         public TabbedComponentEx::Listener,
                         public PseudoModalComponent::Desktop,
                         public juce::Timer
{
public:
    static constexpr int timerIntervalMs = 25;
    static constexpr int defaultWidth = 1024, defaultHeight = 800;
    static constexpr int gridCellWidth = 64, gridRowHeight = 120, gridControlWidth = 50, gridControlHeight = 80;
    static constexpr int debugUidBase = 300000;
    // Event uids the editor answers itself.
    static constexpr int optionsEvent = 1000, aboutEvent = 1001, browsePresetsEvent = 1004, toggleMidiLearnEvent = 1010;

    explicit BasePluginEditor(BasePlugin* plugin);
    ~BasePluginEditor() override;

    virtual bool wantsGapAfterParameter(int /*index*/) { return false; }
    virtual bool wantsNewRowAfterParameter(int /*index*/) { return false; }
    // Called from the timer, only while the editor shows.
    virtual void idle() {}
    virtual bool isStatusBarVisible() { return true; }
    virtual void buildDebugPanel();

    // Parses the named resource and builds its controls; true when the text
    // was XML, whatever its root.
    bool loadSkin(const juce::String& resourceName);
    // Builds the controls of a PluginEditor element; another root builds nothing.
    void parseSkin(const juce::XmlElement& root);
    void setBackgroundImage(const juce::Image& image);
    // The panel's size; the status bar goes below it.
    void setEditorSize(int width, int height);
    // By component name: root's children first, then each child's tree in turn.
    static juce::Component* findControl(const juce::String& name, juce::Component& root);
    juce::Component* findControl(const juce::String& name) { return findControl(name, *this); }
    // The generic grid, when there is no skin.
    void buildDefaultControls();

    // The last step of opening, after construction: the grid if there is no
    // skin, the debug panel if asked for, the timer, and every parameter
    // sent to the panel once.
    void finishOpening();

    // An event as a click on the panel would fire it: the editor's own
    // events first, then a control bound to it, else straight to the plug-in.
    void performEvent(int eventUid, bool withCtrl = false);

    // The status step: learn pick, then name and value on the status bar.
    void showParameterStatus(Parameter* changed);

    bool isSkinLoaded() const { return skinLoaded; }
    int getPanelHeight() const { return panelHeight; }
    BasePlugin* getPlugin() const { return plugin; }
    StatusBar* getStatusBar() const { return statusBar.get(); }
    OptionsWindow* getOptionsWindow() const { return optionsWindow.get(); }
    AboutWindow* getAboutWindow() const { return aboutWindow.get(); }
    MidiControlComponent* getMidiControlComponent() const { return midiControlComponent.get(); }
    GFXMultiStateButton* getMidiLearnButton() const { return midiLearnButton; }
    GFXAnimation* getMidiActivityLed() const { return midiActivityLed; }
    DefaultLookAndFeel& getDefaultLookAndFeel() { return lookAndFeel; }
    juce::Array<GUIController*> getControls() const;
    int getNumDefaultControls() const { return defaultControls.size(); }

    // juce::Component
    void paint(juce::Graphics& g) override;
    void resized() override;
    void childBoundsChanged(juce::Component* child) override;

    // Parameter::Listener: the state parameters that the panel follows.
    void parameterChanged(Parameter&) override {}

    // MidiControl::Listener: learn's prompt on the status bar and the learn
    // button's lamp; the value a controller moved, as a mouse move shows it.
    void midiLearnChanged(MidiControl& midiControl) override;
    void midiControllerMoved(MidiControl& midiControl, Parameter* moved) override;
    // The prompt for what learn has picked so far.
    static juce::String getLearnText(int controller, const Parameter* parameter);

    // GUIController::Listener
    void controllerValueChanged(GUIController& controller) override;
    void controllerEvent(GUIController& controller, int eventUid) override;

    // A default that works only at the next load says so on the status bar.
    void showDefaultResourceHint(const juce::String& settingsName);
    void defaultResourceChanged(DefaultResourceCheckBox& box) override;

    // TabbedComponentEx::Listener: a hint does not outlive its page.
    void tabChanged(TabbedComponentEx& tabs) override;

    void timerCallback() override;

protected:
    // The click of an event, outermost class first; true when handled here.
    virtual bool handleEditorEvent(GUIController* controller, int eventUid);

    // Where a new control enters the child list: behind those before it,
    // in front of the status bar, behind the windows.
    int getControlInsertIndex() const;

    BasePlugin* const plugin;

private:
    void addControl(std::unique_ptr<juce::Component> component, GUIController* controller);
    GUIController* findControllerForEvent(int eventUid, bool withCtrl) const;

    // Declared first: every child draws with it until the end.
    DefaultLookAndFeel lookAndFeel;

    juce::CriticalSection controlsLock;
    juce::Array<GUIController*> controls;
    juce::OwnedArray<juce::Component> components;
    std::unique_ptr<OptionsWindow> optionsWindow;
    std::unique_ptr<MidiControlComponent> midiControlComponent;
    std::unique_ptr<AboutWindow> aboutWindow;
    bool skinLoaded = false;
    GFXAnimation* midiActivityLed = nullptr;
    juce::Image backgroundImage;
    juce::OwnedArray<juce::Component> defaultControls;
    std::unique_ptr<juce::TooltipWindow> tooltipWindow;
    std::unique_ptr<StatusBar> statusBar;
    int panelHeight = defaultHeight;
    GFXMultiStateButton* midiLearnButton = nullptr;
    std::unique_ptr<GFXPanel> debugPanel;
    juce::OwnedArray<juce::Component> debugKnobs, debugButtons;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR(BasePluginEditor)
};
