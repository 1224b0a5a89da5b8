#include "editor/BasePluginEditor.h"

#include "editor/GFXAnimation.h"
#include "editor/GFXButton.h"
#include "editor/GFXKnob.h"
#include "editor/GFXMultiStateButton.h"
#include "editor/GFXPanel.h"
#include "editor/GFXToggleButton.h"
#include "editor/ResourceLoader.h"
#include "editor/SkinControls.h"
#include "editor/options/MidiControlComponent.h"
#include "parameters/ParameterTypes.h"
#include "plugin/BasePlugin.h"

namespace
{
constexpr int tooltipDelayMs = 700;
constexpr int statusPriorityHint = 4;
constexpr int statusPriorityMidi = 5;
constexpr int statusPriorityMouse = 6;
constexpr int statusPriorityLearn = 7;
constexpr int statusMessageMs = 3000;
constexpr int debugControlCount = 6;

juce::StringPairArray describe(const BasePlugin& plugin)
{
    juce::StringPairArray facts;
    facts.set("Product", plugin.getProductName());
    facts.set("Version", plugin.getVersion() + (plugin.getEdition().isNotEmpty() ? " " + plugin.getEdition() : juce::String()));
    facts.set("Code name", plugin.getCodeName());
    facts.set("Build", plugin.getBuildNumber() + ", " + plugin.getBuildDate());
    facts.set("Formats", "VST3, LV2 and standalone application, for Linux");
    // A program that hosts it itself, as the renderer does, is no format.
    if (plugin.wrapperType != juce::AudioProcessor::wrapperType_Undefined)
        facts.set("Running as", plugin.getFormatName() + ", " + plugin.getArchitecture());
    facts.set("Home page", plugin.getHomePage());
    facts.set("Copyright", "(c) " + plugin.getYear() + " Quindrel Audio");
    if (plugin.getPluginPath().isNotEmpty())
        facts.set("Location", plugin.getPluginPath());
    return facts;
}
} // namespace

BasePluginEditor::BasePluginEditor(BasePlugin* pluginToUse)
    : plugin(pluginToUse)
{
    setLookAndFeel(&lookAndFeel);
    setOpaque(true);
    // A click on a control that takes no keys leaves the focus with the panel
    // itself, so that it ends a name's edit instead of starting the edit of
    // the first display that takes keys; the host keeps the keys it is sent.
    setWantsKeyboardFocus(true);

    tooltipWindow = std::make_unique<juce::TooltipWindow>(this, tooltipDelayMs);

    statusBar = std::make_unique<StatusBar>();
    addAndMakeVisible(*statusBar);
    statusBar->sendLookAndFeelChange();

    aboutWindow = std::make_unique<AboutWindow>(describe(*plugin));
    addChildComponent(*aboutWindow);

    optionsWindow = std::make_unique<OptionsWindow>();
    addChildComponent(*optionsWindow);
    optionsWindow->getTabs().addListener(this);

    midiControlComponent = std::make_unique<MidiControlComponent>(*plugin);
    midiControlComponent->getDefaultMapBox().addListener(this);
    optionsWindow->addPage("Midi Control", midiControlComponent.get(), false);

    plugin->getMidiControl().addListener(this);
    plugin->getParameterManager().addAsyncListenerToAll(this);

    setEditorSize(defaultWidth, defaultHeight);
    skinLoaded = loadSkin("skin.xml");

    midiLearnButton = dynamic_cast<GFXMultiStateButton*>(findControl("MidiLearnButton"));
    midiActivityLed = dynamic_cast<GFXAnimation*>(findControl("MidiActivityLed"));
}

BasePluginEditor::~BasePluginEditor()
{
    stopTimer();
    plugin->getMidiControl().removeListener(this);
    plugin->getParameterManager().removeAsyncListenerFromAll(this);

    debugButtons.clear();
    debugKnobs.clear();
    debugPanel.reset();
    statusBar.reset();
    tooltipWindow.reset();
    defaultControls.clear();

    setLookAndFeel(nullptr);
    backgroundImage = {};

    aboutWindow.reset();
    optionsWindow.reset();
    midiControlComponent.reset();

    {
        const juce::ScopedLock sl(controlsLock);
        controls.clear();
    }
    components.clear();
}

//==============================================================================
bool BasePluginEditor::loadSkin(const juce::String& resourceName)
{
    const auto xml = juce::parseXML(loadResourceText(resourceName));
    if (xml == nullptr)
        return false;

    parseSkin(*xml);
    return true;
}

void BasePluginEditor::parseSkin(const juce::XmlElement& root)
{
    if (!root.hasTagName("PluginEditor"))
        return;

    juce::Image background;
    loadResourceImage(root.getStringAttribute("background", "Background.png"), background);
    setBackgroundImage(background);

    for (const auto* element : root.getChildIterator())
    {
        GUIController* controller = nullptr;
        auto component = createSkinControl(element->getTagName(), element->getStringAttribute("name"), controller);
        if (component == nullptr)
            continue;

        auto* made = component.get();
        {
            const juce::ScopedLock sl(controlsLock);
            controls.add(controller);
        }
        components.add(component.release());

        controller->loadFromXml(*element, plugin->getParameterManager(), plugin->getEvents(), this);
        made->setVisible(true);
        addChildComponent(made, getControlInsertIndex());
    }

    for (auto* controller : getControls())
        controller->addListener(this);
}

juce::Array<GUIController*> BasePluginEditor::getControls() const
{
    const juce::ScopedLock sl(controlsLock);
    return controls;
}

int BasePluginEditor::getControlInsertIndex() const
{
    return statusBar != nullptr ? getIndexOfChildComponent(statusBar.get()) + 1 : 0;
}

void BasePluginEditor::setBackgroundImage(const juce::Image& image)
{
    backgroundImage = image;
    if (backgroundImage.isValid())
        setEditorSize(backgroundImage.getWidth(), backgroundImage.getHeight());
    repaint();
}

void BasePluginEditor::setEditorSize(int width, int height)
{
    panelHeight = height;
    const bool withStatusBar = statusBar != nullptr && isStatusBarVisible();
    const int statusHeight = withStatusBar ? statusBar->getHeight() : 0;

    setBounds(getX(), getY(), width, height + statusHeight);
    if (statusBar != nullptr)
    {
        statusBar->setVisible(withStatusBar);
        statusBar->setBounds(0, height, width, statusBar->getHeight());
    }
    if (auto* parent = getParentComponent())
        parent->setSize(width, height + statusHeight);
}

void BasePluginEditor::resized()
{
    if (statusBar != nullptr)
        statusBar->setBounds(0, panelHeight, getWidth(), statusBar->getHeight());
    repaint();
}

void BasePluginEditor::childBoundsChanged(juce::Component* child)
{
    if (child != nullptr && child == statusBar.get() && getHeight() != panelHeight + statusBar->getHeight())
        setEditorSize(getWidth(), panelHeight);
}

juce::Component* BasePluginEditor::findControl(const juce::String& name, juce::Component& root)
{
    for (auto* child : root.getChildren())
        if (child->getName() == name)
            return child;

    for (auto* child : root.getChildren())
        if (auto* found = findControl(name, *child))
            return found;

    return nullptr;
}

void BasePluginEditor::paint(juce::Graphics& g)
{
    if (backgroundImage.isValid())
    {
        g.fillAll(juce::Colours::black);
        g.drawImageAt(backgroundImage, 0, 0);
        return;
    }

    g.fillAll(juce::Colour::greyLevel(0.9f));
    g.setColour(juce::Colours::black);
    g.setFont(DefaultLookAndFeel::getPanelFont(18.0f, true));
    g.drawText(plugin->getProductName(), 5, 2, getWidth() - 10, 24, juce::Justification::centredLeft, true);
}

//==============================================================================
void BasePluginEditor::addControl(std::unique_ptr<juce::Component> component, GUIController* controller)
{
    controller->addListener(this);
    addAndMakeVisible(*component, getControlInsertIndex());
    defaultControls.add(component.release());
}

void BasePluginEditor::buildDefaultControls()
{
    if (skinLoaded)
        return;

    auto& parameters = plugin->getParameterManager();
    const int width = getWidth();
    int columns = (width - 10) / gridCellWidth;
    if (gridCellWidth * columns - 14 < width - 10)
        ++columns;

    int column = 0;
    int y = 30;
    int bottom = 0;
    const int count = juce::jmin(plugin->getNumHostParameters(), (int) BasePlugin::maxHostParameters);

    // One plain control per parameter the host sees: the user's parameters,
    // not the lamps and mirrors that the panel only shows.
    for (int index = 0; index < count; ++index)
    {
        auto* parameter = parameters.getParameter(index);
        if (parameter == nullptr)
            continue;

        std::unique_ptr<juce::Component> component;
        GUIController* controller = nullptr;
        if (dynamic_cast<BoolParameter*>(parameter) != nullptr || plugin->isHostParameterToggle(index))
        {
            auto toggle = std::make_unique<GFXToggleButton>(parameter->getName());
            controller = toggle.get();
            component = std::move(toggle);
        }
        else
        {
            std::unique_ptr<GFXKnob> knob;
            if (dynamic_cast<IntParameter*>(parameter) != nullptr)
                knob = std::make_unique<GFXSwitch>();
            else
                knob = std::make_unique<GFXKnob>();
            knob->setName(parameter->getName());
            knob->setValueText([this](const Parameter& shown)
                               { return plugin->getParameterDisplayText(shown.getId()); });
            controller = knob.get();
            component = std::move(knob);
        }

        component->setBounds(gridCellWidth * column + 5, y, gridControlWidth, gridControlHeight);
        bottom = y + gridControlHeight;
        addControl(std::move(component), controller);
        controller->connectToParameter(parameter);

        ++column;
        if (wantsGapAfterParameter(index))
            ++column;
        if (wantsNewRowAfterParameter(index) || column >= columns)
        {
            y += gridRowHeight;
            column = 0;
        }
    }

    // The panel grows to hold the whole grid.
    if (bottom + 10 > panelHeight)
        setEditorSize(width, bottom + 10);
}

void BasePluginEditor::buildDebugPanel()
{
    debugPanel = std::make_unique<GFXPanel>("DebugPanel");
    debugPanel->setBounds(getWidth() - 600 - 10, panelHeight - 140 - 10, 600, 140);

    auto& parameters = plugin->getParameterManager();
    int x = 10;
    for (int i = 0; i < debugControlCount; ++i, x += 48)
    {
        auto* knob = new GFXKnob();
        debugKnobs.add(knob);
        knob->setName("Debug Knob " + juce::String(i));
        knob->setBounds(x, 25, 40, 90);
        knob->connectToParameter(parameters.getParameter(debugUidBase + i));
        static_cast<GUIController*>(knob)->addListener(this);
        debugPanel->addAndMakeVisible(knob);
    }
    for (int i = 0; i < debugControlCount; ++i, x += 48)
    {
        auto* button = new GFXButton("Debug Button " + juce::String(i));
        debugButtons.add(button);
        button->setBounds(x, 25, 40, 90);
        button->addAction("onClick", debugUidBase + i, "Debug event " + juce::String(i));
        static_cast<GUIController*>(button)->addListener(this);
        debugPanel->addAndMakeVisible(button);
    }

    addAndMakeVisible(*debugPanel, getControlInsertIndex());
}

void BasePluginEditor::finishOpening()
{
    buildDefaultControls();
    if (plugin->useDebugParameters())
        buildDebugPanel();
    startTimer(timerIntervalMs);
    midiLearnChanged(plugin->getMidiControl());

    // Only the panel's side hears this: engine and host already agree with
    // the parameters, and must not be told of a change that did not happen.
    auto& parameters = plugin->getParameterManager();
    for (int i = 0; i < parameters.getNumParameters(); ++i)
        if (auto* parameter = parameters.getParameterByIndex(i))
            parameter->handleAsyncUpdate();
}

void BasePluginEditor::timerCallback()
{
    if (isShowing())
        idle();
}

//==============================================================================
void BasePluginEditor::showParameterStatus(Parameter* changed)
{
    if (changed == nullptr)
        return;

    auto& midiControl = plugin->getMidiControl();
    if (changed->isAutomatable() && midiControl.isLearnMode())
        midiControl.setLearnParameter(changed);

    const auto text = plugin->getParameterDisplayText(changed->getId());
    if (text.isEmpty())
        return;

    statusBar->setTimedMessage(changed->getName() + ": " + text, statusPriorityMouse, statusMessageMs);
}

juce::String BasePluginEditor::getLearnText(int controller, const Parameter* parameter)
{
    if (controller < 0 && parameter == nullptr)
        return "Waiting for a controller or parameter movement...";
    if (controller < 0)
        return "'" + parameter->getName() + "' parameter is free. Waiting for a free controller now...";
    if (parameter == nullptr)
        return "CC# " + juce::String(controller) + " is free. Waiting for a parameter now...";
    return "CC# " + juce::String(controller) + " is assigned to parameter '" + parameter->getName() + "'.";
}

void BasePluginEditor::midiLearnChanged(MidiControl& midiControl)
{
    // A state restored on a host's thread may end learn there: the panel
    // hears of it on its own thread.
    if (!juce::MessageManager::existsAndIsCurrentThread())
    {
        juce::MessageManager::callAsync([safe = juce::Component::SafePointer<BasePluginEditor>(this)]
                                        {
                                            if (safe != nullptr)
                                                safe->midiLearnChanged(safe->plugin->getMidiControl()); });
        return;
    }

    bool learning = false;
    int controller = -1;
    Parameter* parameter = nullptr;
    {
        const juce::ScopedLock sl(midiControl.getLock());
        learning = midiControl.isLearnMode();
        controller = midiControl.getLearnController();
        parameter = midiControl.getLearnParameter();
    }

    if (learning)
        statusBar->setMessage(getLearnText(controller, parameter), statusPriorityLearn);
    else
        statusBar->clear(StatusBar::anyPriority);

    if (midiLearnButton != nullptr)
        midiLearnButton->setCurrentState(learning ? 1 : 0);
}

void BasePluginEditor::midiControllerMoved(MidiControl&, Parameter* moved)
{
    if (moved == nullptr)
        return;

    const auto text = plugin->getParameterDisplayText(moved->getId());
    if (text.isNotEmpty())
        statusBar->setTimedMessage(moved->getName() + ": " + text, statusPriorityMidi, statusMessageMs);
}

void BasePluginEditor::controllerValueChanged(GUIController& controller)
{
    showParameterStatus(controller.getParameter());
}

void BasePluginEditor::controllerEvent(GUIController& controller, int eventUid)
{
    if (handleEditorEvent(&controller, eventUid))
        return;

    plugin->handleEvent(eventUid);
    showParameterStatus(controller.getParameter());
}

bool BasePluginEditor::handleEditorEvent(GUIController*, int eventUid)
{
    if (eventUid == optionsEvent)
    {
        optionsWindow->showCentred();
        statusBar->clear(StatusBar::anyPriority);
        return true;
    }
    if (eventUid == aboutEvent)
    {
        aboutWindow->showCentred();
        return true;
    }
    if (eventUid == toggleMidiLearnEvent)
    {
        auto& midiControl = plugin->getMidiControl();
        const juce::ScopedLock sl(midiControl.getLock());
        midiControl.setLearnMode(!midiControl.isLearnMode());
        return true;
    }
    return false;
}

GUIController* BasePluginEditor::findControllerForEvent(int eventUid, bool withCtrl) const
{
    for (auto* controller : getControls())
    {
        if (auto* button = dynamic_cast<GFXButton*>(controller))
        {
            if ((withCtrl ? button->getCtrlClickEventUid() : button->getClickEventUid()) == eventUid)
                return controller;
        }
        else if (auto* multiState = dynamic_cast<GFXMultiStateButton*>(controller))
        {
            if ((withCtrl ? multiState->getCtrlClickEventUid() : multiState->getClickEventUid()) == eventUid)
                return controller;
        }
    }
    return nullptr;
}

void BasePluginEditor::performEvent(int eventUid, bool withCtrl)
{
    if (auto* controller = findControllerForEvent(eventUid, withCtrl))
        controllerEvent(*controller, eventUid);
    else if (!handleEditorEvent(nullptr, eventUid))
        plugin->handleEvent(eventUid);
}

void BasePluginEditor::showDefaultResourceHint(const juce::String& settingsName)
{
    statusBar->setMessage(settingsName + " settings will be affected when plugin is loaded.", statusPriorityHint);
}

void BasePluginEditor::defaultResourceChanged(DefaultResourceCheckBox& box)
{
    showDefaultResourceHint(box.getHintName());
}

void BasePluginEditor::tabChanged(TabbedComponentEx& tabs)
{
    if (optionsWindow != nullptr && &tabs == &optionsWindow->getTabs())
        statusBar->clear(StatusBar::anyPriority);
}
