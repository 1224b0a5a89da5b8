#include "editor/browser/ColumnBrowser.h"

#include "editor/DefaultLookAndFeel.h"

namespace
{
constexpr int dragThreshold = 4;

juce::Font rowFont(bool current)
{
    return DefaultLookAndFeel::getPanelFont(14.5f, current);
}
} // namespace

//==============================================================================
ColumnBrowser::Column::Column(const juce::String& titleToShow)
    : title(titleToShow)
{
}

void ColumnBrowser::Column::setTitle(const juce::String& newTitle)
{
    if (newTitle == title)
        return;
    title = newTitle;
    repaint(0, 0, getWidth(), headerHeight);
}

void ColumnBrowser::Column::paint(juce::Graphics& g)
{
    juce::Rectangle<int> header(0, 0, getWidth(), headerHeight);
    g.setColour(juce::Colour(DefaultLookAndFeel::grey4));
    g.fillRect(header);
    g.setColour(juce::Colour(DefaultLookAndFeel::grey3));
    g.fillRect(header.removeFromBottom(1));

    g.setColour(juce::Colours::black);
    g.setFont(DefaultLookAndFeel::getPanelFont(14.5f, true));
    g.drawText(title, 8, 0, getWidth() - 16, headerHeight, juce::Justification::centredLeft, true);
}

//==============================================================================
ColumnBrowser::ListColumn::ItemComponent::ItemComponent(ListColumn& columnToUse, int indexToUse)
    : column(columnToUse)
    , index(indexToUse)
{
    setName(column.getItemName(index));
}

void ColumnBrowser::ListColumn::ItemComponent::paint(juce::Graphics& g)
{
    const bool selected = column.isSelected(index);
    const bool current = column.isItemCurrent(index);
    if (selected)
        g.fillAll(juce::Colour(DefaultLookAndFeel::grey3));
    else if (index % 2 == 1)
        g.fillAll(juce::Colour(DefaultLookAndFeel::grey6).withAlpha(0.5f));

    const auto text = column.getItemText(index);
    g.setColour(selected ? juce::Colours::white : juce::Colours::black);
    g.setFont(rowFont(current));
    auto area = getLocalBounds().withTrimmedLeft(12).withTrimmedRight(6);
    if (current)
    {
        // The current item is marked, whatever the selection.
        juce::Path mark;
        const float y = (float) getHeight() * 0.5f;
        mark.addTriangle(3.0f, y - 4.0f, 3.0f, y + 4.0f, 7.5f, y);
        g.fillPath(mark);
    }
    g.drawText(text, area, juce::Justification::centredLeft, true);
}

void ColumnBrowser::ListColumn::ItemComponent::resized()
{
    if (editor != nullptr)
        editor->setBounds(getLocalBounds().withTrimmedLeft(4));
}

void ColumnBrowser::ListColumn::ItemComponent::mouseDown(const juce::MouseEvent& e)
{
    if (e.getNumberOfClicks() > 1)
        return;
    dragging = false;
    clickPending = column.pressItem(index, e.mods);
}

void ColumnBrowser::ListColumn::ItemComponent::mouseDrag(const juce::MouseEvent& e)
{
    if (dragging || e.getDistanceFromDragStart() < dragThreshold || !column.isSelected(index))
        return;

    const auto description = column.getDragDescription();
    if (description.isVoid())
        return;

    dragging = true;
    clickPending = false;
    // The rows hang from the mouse by their top left corner (JUCE takes the
    // offset negated).
    const juce::Point<int> offset(-16, -rowHeight / 2);
    if (auto* container = juce::DragAndDropContainer::findParentDragContainerFor(this))
        container->startDragging(description, this, column.makeDragImage(), false, &offset);
}

void ColumnBrowser::ListColumn::ItemComponent::mouseUp(const juce::MouseEvent& e)
{
    if (!clickPending || dragging || e.getNumberOfClicks() > 1)
        return;
    clickPending = false;
    column.selectOnly(index);
    column.itemClicked(index);
}

void ColumnBrowser::ListColumn::ItemComponent::mouseDoubleClick(const juce::MouseEvent&)
{
    startRenaming();
}

void ColumnBrowser::ListColumn::ItemComponent::startRenaming()
{
    if (editor != nullptr)
        return;

    editor = std::make_unique<juce::TextEditor>("Rename");
    editor->setFont(rowFont(false));
    editor->setColour(juce::TextEditor::backgroundColourId, juce::Colours::white);
    editor->setColour(juce::TextEditor::textColourId, juce::Colours::black);
    editor->setColour(juce::TextEditor::outlineColourId, juce::Colour(DefaultLookAndFeel::grey1));
    editor->setColour(juce::TextEditor::focusedOutlineColourId, juce::Colour(DefaultLookAndFeel::grey1));
    editor->setBorder({ 1, 3, 1, 3 });
    editor->setText(column.getItemName(index), false);
    editor->selectAll();
    editor->addListener(this);
    addAndMakeVisible(*editor);
    resized();
    editor->grabKeyboardFocus();
}

void ColumnBrowser::ListColumn::ItemComponent::finishRenaming(bool keep)
{
    if (editor == nullptr)
        return;

    // The editor tells us from its command handler, which touches nothing
    // of it after its listeners: it may go at once.
    const auto text = editor->getText().trim();
    editor->removeListener(this);
    editor.reset();
    repaint();

    if (keep && text.isNotEmpty() && text != column.getItemName(index))
        column.itemRenamed(index, text);
}

void ColumnBrowser::ListColumn::ItemComponent::textEditorReturnKeyPressed(juce::TextEditor&)
{
    finishRenaming(true);
}

void ColumnBrowser::ListColumn::ItemComponent::textEditorEscapeKeyPressed(juce::TextEditor&)
{
    finishRenaming(false);
}

void ColumnBrowser::ListColumn::ItemComponent::textEditorFocusLost(juce::TextEditor&)
{
    finishRenaming(true);
}

//==============================================================================
ColumnBrowser::ListColumn::List::List(ListColumn& columnToUse)
    : column(columnToUse)
{
}

void ColumnBrowser::ListColumn::List::rebuild(int count)
{
    // Rows that stay keep their components: one of them may be handling the
    // mouse event that led here.
    while (items.size() > count)
        items.removeLast();
    while (items.size() < count)
        addAndMakeVisible(items.add(new ItemComponent(column, items.size())));

    for (auto* item : items)
    {
        item->setBounds(0, item->getIndex() * rowHeight, getWidth(), rowHeight);
        item->setName(column.getItemName(item->getIndex()));
        item->repaint();
    }
}

int ColumnBrowser::ListColumn::List::getRowAt(int y) const
{
    const int row = y / rowHeight;
    return y >= 0 && row < items.size() ? row : -1;
}

int ColumnBrowser::ListColumn::List::getBoundaryAt(int y) const
{
    return juce::jlimit(0, items.size(), (y + rowHeight / 2) / rowHeight);
}

bool ColumnBrowser::ListColumn::List::isInterestedInDragSource(const SourceDetails& details)
{
    return column.getDropMode(details.description) != DropMode::none;
}

void ColumnBrowser::ListColumn::List::showDropTarget(const SourceDetails& details)
{
    const auto mode = column.getDropMode(details.description);
    const int y = details.localPosition.y;
    const int index = mode == DropMode::onto ? getRowAt(y) : mode == DropMode::between ? getBoundaryAt(y)
                                                                                       : -1;
    if (mode != hoverMode || index != hoverIndex)
    {
        hoverMode = mode;
        hoverIndex = index;
        repaint();
    }
}

void ColumnBrowser::ListColumn::List::itemDragEnter(const SourceDetails& details)
{
    showDropTarget(details);
}

void ColumnBrowser::ListColumn::List::itemDragMove(const SourceDetails& details)
{
    showDropTarget(details);
    const auto inViewport = column.getViewport().getLocalPoint(this, details.localPosition);
    column.getViewport().autoScroll(inViewport.x, inViewport.y, rowHeight, 8);
}

void ColumnBrowser::ListColumn::List::itemDragExit(const SourceDetails&)
{
    hoverMode = DropMode::none;
    hoverIndex = -1;
    repaint();
}

void ColumnBrowser::ListColumn::List::itemDropped(const SourceDetails& details)
{
    showDropTarget(details);
    const auto mode = hoverMode;
    const int index = hoverIndex;
    hoverMode = DropMode::none;
    hoverIndex = -1;
    repaint();

    if (mode != DropMode::none && index >= 0)
        column.itemsDropped(details.description, index);
}

void ColumnBrowser::ListColumn::List::paintOverChildren(juce::Graphics& g)
{
    if (hoverIndex < 0)
        return;

    g.setColour(juce::Colour(DefaultLookAndFeel::grey1));
    if (hoverMode == DropMode::onto)
        g.drawRect(0, hoverIndex * rowHeight, getWidth(), rowHeight, 2);
    else if (hoverMode == DropMode::between)
        g.fillRect(0, juce::jlimit(0, juce::jmax(0, getHeight() - 2), hoverIndex * rowHeight - 1), getWidth(), 2);
}

//==============================================================================
ColumnBrowser::ListColumn::ListColumn(const juce::String& title)
    : Column(title)
    , list(*this)
{
    viewport.setViewedComponent(&list, false);
    viewport.setScrollBarsShown(true, false);
    viewport.setScrollBarThickness(10);
    addAndMakeVisible(viewport);
}

ColumnBrowser::ListColumn::~ListColumn()
{
    viewport.setViewedComponent(nullptr, false);
}

void ColumnBrowser::ListColumn::refresh()
{
    const int count = getNumItems();
    juce::SparseSet<int> kept;
    for (int i = 0; i < selection.size(); ++i)
        if (selection[i] < count)
            kept.addRange({ selection[i], selection[i] + 1 });
    selection = kept;

    list.setSize(viewport.getMaximumVisibleWidth(), count * rowHeight);
    list.rebuild(count);
}

void ColumnBrowser::ListColumn::setSelection(const juce::SparseSet<int>& newSelection)
{
    selection = newSelection;
    list.repaint();
    for (int i = 0; i < list.getNumItemComponents(); ++i)
        list.getItem(i)->repaint();
}

void ColumnBrowser::ListColumn::selectOnly(int index)
{
    juce::SparseSet<int> one;
    if (juce::isPositiveAndBelow(index, getNumItems()))
        one.addRange({ index, index + 1 });
    anchor = index;
    setSelection(one);
}

juce::ScaledImage ColumnBrowser::ListColumn::makeDragImage()
{
    // The selected rows, a few of them, stacked under the mouse.
    constexpr int shownRows = 4;
    const int rows = juce::jmin(shownRows, selection.size());
    constexpr int width = 240;
    juce::Image image(juce::Image::ARGB, width, juce::jmax(1, rows) * rowHeight, true);
    {
        juce::Graphics g(image);
        for (int i = 0; i < rows; ++i)
            if (auto* item = list.getItem(selection[i]))
                g.drawImageAt(item->createComponentSnapshot(item->getLocalBounds().withWidth(width)), 0, i * rowHeight);
    }
    image.multiplyAllAlphas(0.7f);
    return juce::ScaledImage(image);
}

void ColumnBrowser::ListColumn::scrollToShow(int index)
{
    const int top = index * rowHeight;
    const int shownTop = viewport.getViewPositionY();
    const int shownHeight = viewport.getMaximumVisibleHeight();
    if (top < shownTop)
        viewport.setViewPosition(0, top);
    else if (top + rowHeight > shownTop + shownHeight)
        viewport.setViewPosition(0, top + rowHeight - shownHeight);
}

bool ColumnBrowser::ListColumn::pressItem(int index, const juce::ModifierKeys& mods)
{
    if (allowsMultipleSelection() && mods.isShiftDown() && anchor >= 0)
    {
        juce::SparseSet<int> range;
        range.addRange({ juce::jmin(anchor, index), juce::jmax(anchor, index) + 1 });
        setSelection(range);
        return false;
    }
    if (allowsMultipleSelection() && mods.isCommandDown())
    {
        auto toggled = selection;
        if (toggled.contains(index))
            toggled.removeRange({ index, index + 1 });
        else
            toggled.addRange({ index, index + 1 });
        anchor = index;
        setSelection(toggled);
        return false;
    }

    // A press on a selected row keeps the selection, which a drag may carry;
    // the release makes the row the only one.
    if (!selection.contains(index))
    {
        anchor = index;
        juce::SparseSet<int> one;
        one.addRange({ index, index + 1 });
        setSelection(one);
    }
    return true;
}

void ColumnBrowser::ListColumn::setFooterHeight(int height)
{
    footerHeight = height;
    resized();
}

juce::Rectangle<int> ColumnBrowser::ListColumn::getFooterArea() const
{
    return getBodyArea().removeFromBottom(footerHeight);
}

void ColumnBrowser::ListColumn::paint(juce::Graphics& g)
{
    Column::paint(g);
    g.setColour(juce::Colour(DefaultLookAndFeel::grey6).brighter(0.5f));
    g.fillRect(viewport.getBounds());
}

void ColumnBrowser::ListColumn::resized()
{
    viewport.setBounds(getBodyArea().withTrimmedBottom(footerHeight));
    list.setSize(viewport.getMaximumVisibleWidth(), list.getHeight());
    list.rebuild(list.getNumItemComponents());
}

//==============================================================================
ColumnBrowser::ViewportComponent::ViewportComponent(ColumnBrowser& browserToUse)
    : browser(browserToUse)
{
}

void ColumnBrowser::ViewportComponent::resized()
{
    int fixed = 0, flexible = 0;
    for (int i = 0; i < browser.getNumColumns(); ++i)
    {
        const int width = browser.getColumn(i)->getPreferredWidth();
        fixed += width;
        flexible += width == 0 ? 1 : 0;
    }
    const int spare = juce::jmax(0, getWidth() - fixed - (browser.getNumColumns() - 1));

    int x = 0;
    for (int i = 0; i < browser.getNumColumns(); ++i)
    {
        auto* column = browser.getColumn(i);
        const int width = column->getPreferredWidth() > 0 ? column->getPreferredWidth() : spare / juce::jmax(1, flexible);
        column->setBounds(x, 0, width, getHeight());
        x += width + 1;
    }
}

//==============================================================================
ColumnBrowser::ColumnBrowser()
    : content(*this)
{
    setViewedComponent(&content, false);
    setScrollBarsShown(false, true);
    setScrollBarThickness(10);
}

ColumnBrowser::~ColumnBrowser()
{
    setViewedComponent(nullptr, false);
    columns.clear();
}

void ColumnBrowser::addColumn(Column* column)
{
    columns.add(column);
    content.addAndMakeVisible(column);
    resized();
}

void ColumnBrowser::resized()
{
    juce::Viewport::resized();
    int wanted = 0;
    for (auto* column : columns)
        wanted += column->getPreferredWidth() > 0 ? column->getPreferredWidth() : 120;
    content.setSize(juce::jmax(getMaximumVisibleWidth(), wanted), getMaximumVisibleHeight());
}
