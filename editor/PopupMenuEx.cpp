#include "editor/PopupMenuEx.h"

#include "editor/DefaultLookAndFeel.h"

namespace
{
juce::Font menuFont()
{
    return DefaultLookAndFeel::getPanelFont(15.0f);
}
} // namespace

PopupMenuEx::Window::Window(PopupMenuEx& ownerToUse)
    : owner(ownerToUse)
{
}

int PopupMenuEx::Window::getRowAt(int y) const
{
    const int row = (y - 2) / rowHeight;
    return y >= 2 && row < owner.getNumItems() ? row : -1;
}

int PopupMenuEx::Window::getPreferredWidth() const
{
    int width = 80;
    for (int i = 0; i < owner.getNumItems(); ++i)
        width = juce::jmax(width, menuFont().getStringWidth(owner.getItemText(i)) + 24);
    return width;
}

void PopupMenuEx::Window::paint(juce::Graphics& g)
{
    g.fillAll(findColour(juce::PopupMenu::backgroundColourId));
    g.setFont(menuFont());

    for (int i = 0; i < owner.getNumItems(); ++i)
    {
        const juce::Rectangle<int> row(1, 2 + i * rowHeight, getWidth() - 2, rowHeight);
        if (i == hotRow)
        {
            g.setColour(findColour(juce::PopupMenu::highlightedBackgroundColourId));
            g.fillRect(row);
        }
        g.setColour(findColour(i == hotRow ? juce::PopupMenu::highlightedTextColourId : juce::PopupMenu::textColourId));
        g.drawText(owner.getItemText(i), row.reduced(10, 0), juce::Justification::centredLeft, true);
    }

    g.setColour(juce::Colour(DefaultLookAndFeel::grey1));
    g.drawRect(getLocalBounds());
}

void PopupMenuEx::Window::mouseMove(const juce::MouseEvent& e)
{
    const int row = getRowAt(e.y);
    if (row != hotRow)
    {
        hotRow = row;
        repaint();
    }
}

void PopupMenuEx::Window::mouseExit(const juce::MouseEvent&)
{
    hotRow = -1;
    repaint();
}

void PopupMenuEx::Window::mouseUp(const juce::MouseEvent& e)
{
    if (getLocalBounds().contains(e.getPosition()))
        if (const int row = getRowAt(e.y); row >= 0)
            owner.selectRow(row);
}

//==============================================================================
PopupMenuEx::PopupMenuComponent::PopupMenuComponent(PopupMenuEx& owner)
    : PseudoModalComponent("PopupMenu")
    , window(owner)
{
    addAndMakeVisible(window);
}

void PopupMenuEx::PopupMenuComponent::resized()
{
    window.setBounds(getLocalBounds());
}

//==============================================================================
PopupMenuEx::PopupMenuEx()
    : component(*this)
{
}

void PopupMenuEx::addItem(const juce::String& text, int itemId)
{
    items.add({ text, itemId });
}

void PopupMenuEx::clear()
{
    items.clear();
}

void PopupMenuEx::show(juce::Component* relativeTo, juce::Point<int> position)
{
    component.setSize(component.getWindow().getPreferredWidth(), items.size() * Window::rowHeight + 4);
    component.show(relativeTo, PseudoModalComponent::atPosition, position);
}

void PopupMenuEx::close()
{
    component.close();
}

void PopupMenuEx::selectRow(int index)
{
    if (!juce::isPositiveAndBelow(index, items.size()))
        return;

    const int id = items.getReference(index).id;
    close();
    listeners.call([this, id](Listener& l)
                   { l.menuItemSelected(*this, id); });
}

//==============================================================================
ComboBoxEx::ComboBoxEx(const juce::String& name)
    : juce::Component(name)
{
    menu.addListener(this);
}

void ComboBoxEx::addItem(const juce::String& text, int itemId)
{
    menu.addItem(text, itemId);
    repaint();
}

void ComboBoxEx::clear()
{
    menu.clear();
    selectedId = 0;
    repaint();
}

void ComboBoxEx::setSelectedId(int itemId, bool notify)
{
    if (itemId == selectedId)
        return;
    selectedId = itemId;
    repaint();
    if (notify)
        listeners.call([this](Listener& l)
                       { l.comboBoxExChanged(*this); });
}

juce::String ComboBoxEx::getText() const
{
    for (int i = 0; i < menu.getNumItems(); ++i)
        if (menu.getItemId(i) == selectedId)
            return menu.getItemText(i);
    return "---";
}

void ComboBoxEx::paint(juce::Graphics& g)
{
    const auto bounds = getLocalBounds();
    g.setColour(findColour(juce::ComboBox::backgroundColourId));
    g.fillRect(bounds);
    g.setColour(findColour(juce::ComboBox::outlineColourId));
    g.drawRect(bounds);

    g.setColour(findColour(juce::ComboBox::textColourId).withMultipliedAlpha(isEnabled() ? 1.0f : 0.5f));
    g.setFont(DefaultLookAndFeel::getPanelFont(juce::jmin(15.0f, (float) getHeight() * 0.75f)));
    g.drawText(getText(), bounds.reduced(5, 0).withTrimmedRight(14), juce::Justification::centredLeft, true);

    juce::Path arrow;
    const auto centre = juce::Point<float>((float) getWidth() - 10.0f, (float) getHeight() * 0.5f);
    arrow.addTriangle(centre.x - 4.0f, centre.y - 2.0f, centre.x + 4.0f, centre.y - 2.0f, centre.x, centre.y + 3.0f);
    g.fillPath(arrow);
}

void ComboBoxEx::mouseDown(const juce::MouseEvent&)
{
    if (isEnabled())
        menu.show(this, { 0, getHeight() });
}

void ComboBoxEx::menuItemSelected(PopupMenuEx&, int itemId)
{
    setSelectedId(itemId, true);
}
