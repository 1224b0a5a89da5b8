#pragma once

#include "editor/PseudoModalComponent.h"

// A pop-up list of text rows that stays inside the editor: it opens on a
// pseudo-modal layer, and a click on a row tells the listeners and closes it.
// A click beside it closes it too. Message thread.
class PopupMenuEx
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void menuItemSelected(PopupMenuEx&, int itemId) = 0;
    };

    // The list of rows.
    class Window : public juce::Component
    {
    public:
        static constexpr int rowHeight = 22;

        explicit Window(PopupMenuEx& owner);

        int getRowAt(int y) const;
        int getPreferredWidth() const;

        void paint(juce::Graphics& g) override;
        void mouseMove(const juce::MouseEvent& e) override;
        void mouseExit(const juce::MouseEvent& e) override;
        void mouseUp(const juce::MouseEvent& e) override;

    private:
        PopupMenuEx& owner;
        int hotRow = -1;
    };

    // The pseudo-modal that holds the list.
    class PopupMenuComponent : public PseudoModalComponent
    {
    public:
        explicit PopupMenuComponent(PopupMenuEx& owner);

        void coverClicked() override { close(); }
        void resized() override;
        Window& getWindow() { return window; }

    private:
        Window window;
    };

    PopupMenuEx();

    void addItem(const juce::String& text, int itemId);
    void clear();
    int getNumItems() const { return items.size(); }
    const juce::String& getItemText(int index) const { return items.getReference(index).text; }
    int getItemId(int index) const { return items.getReference(index).id; }

    // Opens with its top left at position in relativeTo's coordinates.
    void show(juce::Component* relativeTo, juce::Point<int> position);
    void close();
    bool isShown() const { return component.isShown(); }
    // As a click on row index.
    void selectRow(int index);

    void addListener(Listener* listener) { listeners.add(listener); }
    void removeListener(Listener* listener) { listeners.remove(listener); }

    PopupMenuComponent& getComponent() { return component; }

private:
    struct Item
    {
        juce::String text;
        int id;
    };

    juce::Array<Item> items;
    juce::ListenerList<Listener> listeners;
    PopupMenuComponent component;
};

// A choice shown as its selected text ("---" when none); a click opens the
// choices as a PopupMenuEx inside the panel. Message thread.
class ComboBoxEx : public juce::Component, private PopupMenuEx::Listener
{
public:
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void comboBoxExChanged(ComboBoxEx&) = 0;
    };

    explicit ComboBoxEx(const juce::String& name = {});

    void addItem(const juce::String& text, int itemId);
    void clear();
    // 0 selects nothing.
    void setSelectedId(int itemId, bool notify);
    int getSelectedId() const { return selectedId; }
    juce::String getText() const;
    PopupMenuEx& getMenu() { return menu; }

    void addListener(Listener* listener) { listeners.add(listener); }
    void removeListener(Listener* listener) { listeners.remove(listener); }

    void paint(juce::Graphics& g) override;
    void mouseDown(const juce::MouseEvent& e) override;

private:
    void menuItemSelected(PopupMenuEx&, int itemId) override;

    PopupMenuEx menu;
    int selectedId = 0;
    juce::ListenerList<Listener> listeners;
};
