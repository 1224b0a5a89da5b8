#pragma once

#include "editor/GUIController.h"

#include <map>

class GFXToggleButton;

// The toggles that share a drag group name, across every editor of the
// process: a sweep of the mouse over a row of them sets each one passed to
// the state the first one took. Group names are not scoped, so two open
// editors with the same name paint each other's toggles. Created on first
// use, deleted at shutdown. Message thread.
class GFXToggleButtonDragGroup : private juce::DeletedAtShutdown
{
public:
    struct Group
    {
        juce::Array<GFXToggleButton*> buttons;
        int mouseDownX = 0, mouseDownY = 0;
        bool value = false;
    };

    ~GFXToggleButtonDragGroup() override;

    static GFXToggleButtonDragGroup* getInstance();

    void add(const juce::String& name, GFXToggleButton* button);
    void remove(const juce::String& name, GFXToggleButton* button);
    Group* find(const juce::String& name);

private:
    GFXToggleButtonDragGroup() = default;

    std::map<juce::String, Group> groups;
    static GFXToggleButtonDragGroup* instance;
    static juce::CriticalSection creationLock;
};

// A bitmap on/off button that writes its bool parameter on each click, two
// frames ("2D") or four ("3D": an off toggle does not sink, an on one does).
// Toggles of one drag group can be painted in one horizontal sweep. Message
// thread.
class GFXToggleButton : public BaseGFXController, public juce::Button
{
public:
    static constexpr int style2D = 0, style3D = 1;

    explicit GFXToggleButton(const juce::String& name = {});
    ~GFXToggleButton() override;

    juce::Component& getComponent() override { return *this; }
    void loadFromXml(const juce::XmlElement& xml, ParameterManager& parameters, EventMap& events, BasePluginEditor* editor) override;
    void updateFromParameter(Parameter& changed) override;
    void blinkChanged() override { repaint(); }

    void setDragGroup(const juce::String& groupName);
    const juce::String& getDragGroup() const { return dragGroup; }
    void setInverted(bool shouldInvert);
    int getStyle() const { return style; }

    // Clicks as the mouse does: toggles, with notification.
    void click(const juce::ModifierKeys& modifiers);

    // The frame shown now.
    int getFrame() const;

    void clicked() override;
    void paintButton(juce::Graphics& g, bool highlighted, bool down) override;
    void mouseDown(const juce::MouseEvent& e) override;
    void mouseDrag(const juce::MouseEvent& e) override;
    void mouseUp(const juce::MouseEvent& e) override;
    void enablementChanged() override { repaint(); }

private:
    bool isShownOn() const;

    int style = style2D;
    GFXToggleButtonDragGroup* dragGroupRegistry = nullptr;
    juce::String dragGroup;
    bool inverted = false;
};
