#include "editor/PseudoModalComponent.h"

#include "editor/DefaultLookAndFeel.h"

PseudoModalComponent::CoveringWindow::CoveringWindow(PseudoModalComponent& ownerToUse)
    : owner(ownerToUse)
{
    setWantsKeyboardFocus(true);
}

void PseudoModalComponent::CoveringWindow::paint(juce::Graphics& g)
{
    if (owner.dimsBackground())
        g.fillAll(juce::Colours::black.withAlpha(0.33f));
}

void PseudoModalComponent::CoveringWindow::resized()
{
    owner.updatePosition();
}

void PseudoModalComponent::CoveringWindow::parentHierarchyChanged()
{
    if (auto* parent = getParentComponent())
        setBounds(parent->getLocalBounds());
}

void PseudoModalComponent::CoveringWindow::parentSizeChanged()
{
    if (auto* parent = getParentComponent())
        setBounds(parent->getLocalBounds());
}

void PseudoModalComponent::CoveringWindow::mouseDown(const juce::MouseEvent& e)
{
    if (e.eventComponent == this)
        owner.coverClicked();
}

//==============================================================================
PseudoModalComponent::PseudoModalComponent(const juce::String& name)
    : juce::Component(name)
    , coveringWindow(*this)
{
}

PseudoModalComponent::~PseudoModalComponent()
{
    // The cover is a member: take both off their parents before it goes.
    if (getParentComponent() == &coveringWindow)
        coveringWindow.removeChildComponent(this);
    if (auto* parent = coveringWindow.getParentComponent())
        parent->removeChildComponent(&coveringWindow);
}

bool PseudoModalComponent::isAttached() const
{
    return getParentComponent() == &coveringWindow && coveringWindow.getParentComponent() != nullptr;
}

bool PseudoModalComponent::isShown() const
{
    return isAttached() ? coveringWindow.isVisible() : isVisible();
}

bool PseudoModalComponent::attach(juce::Component* start)
{
    juce::Component* desktop = start;
    while (desktop != nullptr && dynamic_cast<Desktop*>(desktop) == nullptr)
        desktop = desktop->getParentComponent();
    if (desktop == nullptr)
        return false;

    setVisible(true);
    coveringWindow.addAndMakeVisible(this);
    coveringWindow.setVisible(false);
    desktop->addChildComponent(coveringWindow);
    coveringWindow.toBack();
    return true;
}

void PseudoModalComponent::show(juce::Component* relativeTo, int newPlacement, juce::Point<int> newPosition)
{
    // A window not yet in the panel (a menu) finds the panel from relativeTo.
    if (!isAttached())
        attach(getParentComponent() != nullptr || relativeTo == nullptr ? this : relativeTo);

    if (!isAttached())
    {
        setVisible(true);
        return;
    }
    if (coveringWindow.isVisible())
        return;

    placement = newPlacement;
    position = relativeTo != nullptr ? coveringWindow.getLocalPoint(relativeTo, newPosition) : newPosition;
    coveringWindow.setVisible(true);
    coveringWindow.toFront(true);
    showStateChanged();
    updatePosition();
}

void PseudoModalComponent::close()
{
    if (!isAttached())
    {
        setVisible(false);
        return;
    }
    if (coveringWindow.isVisible())
    {
        coveringWindow.setVisible(false);
        coveringWindow.toBack();
        showStateChanged();
    }
}

void PseudoModalComponent::updatePosition()
{
    auto* parent = getParentComponent();
    auto bounds = getBounds();
    if (placement == atPosition)
        bounds.setPosition(position);
    else if (parent != nullptr)
        bounds.setCentre(parent->getLocalBounds().getCentre());

    // It stays inside the panel, smaller if the panel is, so that its title
    // bar and close button can always be reached.
    if (parent != nullptr)
    {
        const auto area = parent->getLocalBounds();
        bounds.setSize(juce::jmin(bounds.getWidth(), area.getWidth()), juce::jmin(bounds.getHeight(), area.getHeight()));
        bounds.setPosition(juce::jlimit(0, area.getWidth() - bounds.getWidth(), bounds.getX()),
                           juce::jlimit(0, area.getHeight() - bounds.getHeight(), bounds.getY()));
    }
    setBounds(bounds);
}

//==============================================================================
WindowComponent::WindowComponent(const juce::String& titleToUse)
    : PseudoModalComponent(titleToUse)
    , title(titleToUse)
{
    closeButton.setName("CloseButton");
    closeButton.onClick = [this]
    { buttonClicked(&closeButton); };
    addAndMakeVisible(closeButton);
}

void WindowComponent::setTitle(const juce::String& newTitle)
{
    title = newTitle;
    repaint();
}

juce::Rectangle<int> WindowComponent::getClientArea() const
{
    return getLocalBounds().reduced(1).withTrimmedTop(titleBarHeight - 1);
}

void WindowComponent::buttonClicked(juce::Button* button)
{
    if (button == &closeButton)
        close();
}

void WindowComponent::paint(juce::Graphics& g)
{
    g.fillAll(findColour(DefaultLookAndFeel::windowBackgroundColourId));

    const auto bar = getLocalBounds().removeFromTop(titleBarHeight);
    g.setColour(findColour(DefaultLookAndFeel::windowTitleBarColourId));
    g.fillRect(bar);
    g.setColour(findColour(DefaultLookAndFeel::windowTitleTextColourId));
    g.setFont(DefaultLookAndFeel::getPanelFont(15.0f, true));
    g.drawText(title, bar.reduced(8, 0), juce::Justification::centredLeft, true);

    g.setColour(findColour(DefaultLookAndFeel::windowOutlineColourId));
    g.drawRect(getLocalBounds());
}

void WindowComponent::resized()
{
    closeButton.setBounds(getWidth() - titleBarHeight + 2, 3, titleBarHeight - 6, titleBarHeight - 6);
}

//==============================================================================
TabbedComponentEx::TabbedComponentEx()
    : juce::TabbedComponent(juce::TabbedButtonBar::TabsAtTop)
{
}

void TabbedComponentEx::currentTabChanged(int, const juce::String&)
{
    listeners.call([this](Listener& l)
                   { l.tabChanged(*this); });
}
