#pragma once

#include "editor/GFXButton.h"

#include <juce_gui_basics/juce_gui_basics.h>

// A window that lives inside the panel. Shown, it stands on a covering layer
// as large as the editor, which takes every click meant for the panel behind
// it: that is the whole of its modality. No modal loop runs, so audio, host,
// timers and parameter updates go on, and the panel behind keeps moving.
// Built once, hidden, and shown again each time. Message thread.
class PseudoModalComponent : public juce::Component
{
public:
    // Marks the component that hosts pseudo-modals: the editor.
    class Desktop
    {
    public:
        virtual ~Desktop() = default;
    };

    // The layer under a shown pseudo-modal; it keeps the bounds of its parent.
    class CoveringWindow : public juce::Component
    {
    public:
        explicit CoveringWindow(PseudoModalComponent& owner);

        void paint(juce::Graphics& g) override;
        void resized() override;
        void parentHierarchyChanged() override;
        void parentSizeChanged() override;
        void mouseDown(const juce::MouseEvent& e) override;

    private:
        PseudoModalComponent& owner;
    };

    static constexpr int centred = 0, atPosition = 1;

    explicit PseudoModalComponent(const juce::String& name = {});
    ~PseudoModalComponent() override;

    virtual bool dimsBackground() const { return false; }
    virtual void updatePosition();
    virtual void showStateChanged() {}
    // A click on the covering layer outside this window; nothing by default.
    virtual void coverClicked() {}

    // Shown centred (placement 0) or with its top left at position, given
    // in relativeTo's coordinates or the cover's, and kept inside the panel.
    // Showing a shown one again changes nothing.
    void show(juce::Component* relativeTo, int placement, juce::Point<int> position);
    void showCentred() { show(nullptr, centred, {}); }
    void close();

    bool isAttached() const;
    bool isShown() const;
    CoveringWindow& getCoveringWindow() { return coveringWindow; }

protected:
    int placement = centred;
    juce::Point<int> position;
    CoveringWindow coveringWindow;

private:
    // Puts this window on its cover, and the cover on the first Desktop
    // found from start upwards; false if there is none.
    bool attach(juce::Component* start);
};

// A pseudo-modal window with a title bar and a close button. Message thread.
class WindowComponent : public PseudoModalComponent, public juce::Button::Listener
{
public:
    static constexpr int titleBarHeight = 24;

    explicit WindowComponent(const juce::String& title);

    bool dimsBackground() const override { return true; }
    void setTitle(const juce::String& newTitle);
    const juce::String& getTitle() const { return title; }
    // The area below the title bar, inside the outline.
    juce::Rectangle<int> getClientArea() const;

    void buttonClicked(juce::Button* button) override;
    void paint(juce::Graphics& g) override;
    void resized() override;

private:
    juce::String title;
    TextButtonEx closeButton{ "X" };
};

// A juce::TabbedComponent that tells its listeners of a change of tab.
class TabbedComponentEx : public juce::TabbedComponent
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void tabChanged(TabbedComponentEx&) = 0;
    };

    TabbedComponentEx();

    void addListener(Listener* listener) { listeners.add(listener); }
    void removeListener(Listener* listener) { listeners.remove(listener); }
    void currentTabChanged(int newCurrentTabIndex, const juce::String& newCurrentTabName) override;

private:
    juce::ListenerList<Listener> listeners;
};
