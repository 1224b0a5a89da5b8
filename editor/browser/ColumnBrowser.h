#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

// Columns side by side, each a titled list that knows its items only through
// virtual operations, with selection, renaming in place and dragging of
// rows within a list and between lists. A subclass gives the columns their
// meaning. Message thread.
class ColumnBrowser : public juce::Viewport, public juce::DragAndDropContainer
{
public:
    // A component with a titled header.
    class Column : public juce::Component
    {
    public:
        static constexpr int headerHeight = 24;

        explicit Column(const juce::String& title);

        void setTitle(const juce::String& newTitle);
        const juce::String& getTitle() const { return title; }
        // The width this column asks for; 0 takes what the others leave.
        virtual int getPreferredWidth() const { return 0; }
        juce::Rectangle<int> getBodyArea() const { return getLocalBounds().withTrimmedTop(headerHeight); }

        void paint(juce::Graphics& g) override;

    private:
        juce::String title;
    };

    // A column that lists text rows, with room for buttons at its foot.
    class ListColumn : public Column
    {
    public:
        static constexpr int rowHeight = 20;
        // Where a drag may land: not here, onto a row, or between rows.
        enum class DropMode
        {
            none,
            onto,
            between
        };

        class List;

        // One row. A press selects it, a release without a drag clicks it,
        // a drag carries the selection, a double click renames it in place.
        class ItemComponent : public juce::Component, private juce::TextEditor::Listener
        {
        public:
            ItemComponent(ListColumn& column, int index);

            int getIndex() const { return index; }
            bool isRenaming() const { return editor != nullptr; }
            // Opens the name's editor; Return or a click elsewhere keeps the text, Escape drops it.
            void startRenaming();
            juce::TextEditor* getEditor() const { return editor.get(); }

            void paint(juce::Graphics& g) override;
            void resized() override;
            void mouseDown(const juce::MouseEvent& e) override;
            void mouseDrag(const juce::MouseEvent& e) override;
            void mouseUp(const juce::MouseEvent& e) override;
            void mouseDoubleClick(const juce::MouseEvent& e) override;

        private:
            void textEditorReturnKeyPressed(juce::TextEditor&) override;
            void textEditorEscapeKeyPressed(juce::TextEditor&) override;
            void textEditorFocusLost(juce::TextEditor&) override;
            void finishRenaming(bool keep);

            ListColumn& column;
            const int index;
            bool clickPending = false, dragging = false;
            std::unique_ptr<juce::TextEditor> editor;
        };

        // The rows, as tall as all of them, inside the column's viewport; it
        // takes the drops and shows where one would land.
        class List : public juce::Component, public juce::DragAndDropTarget
        {
        public:
            explicit List(ListColumn& column);

            ItemComponent* getItem(int index) const { return items[index]; }
            int getNumItemComponents() const { return items.size(); }
            void rebuild(int count);
            // The row under y, or -1; the boundary nearest y, 0 to the count.
            int getRowAt(int y) const;
            int getBoundaryAt(int y) const;

            bool isInterestedInDragSource(const SourceDetails& details) override;
            void itemDragEnter(const SourceDetails& details) override;
            void itemDragMove(const SourceDetails& details) override;
            void itemDragExit(const SourceDetails& details) override;
            void itemDropped(const SourceDetails& details) override;
            void paintOverChildren(juce::Graphics& g) override;

        private:
            void showDropTarget(const SourceDetails& details);

            ListColumn& column;
            juce::OwnedArray<ItemComponent> items;
            DropMode hoverMode = DropMode::none;
            int hoverIndex = -1;
        };

        explicit ListColumn(const juce::String& title);
        ~ListColumn() override;

        // The items, told by the subclass.
        virtual int getNumItems() const = 0;
        virtual juce::String getItemText(int index) const = 0;
        // The name that renaming starts from; the shown text by default.
        virtual juce::String getItemName(int index) const { return getItemText(index); }
        virtual bool isItemCurrent(int /*index*/) const { return false; }
        virtual bool allowsMultipleSelection() const { return false; }
        // A press and release on a row without a drag, after the selection
        // has become that row.
        virtual void itemClicked(int /*index*/) {}
        virtual void itemRenamed(int /*index*/, const juce::String& /*newName*/) {}
        // What a drag of the selection carries; a void var drags nothing.
        virtual juce::var getDragDescription() const { return {}; }
        virtual DropMode getDropMode(const juce::var& /*description*/) const { return DropMode::none; }
        // A drop: index is the row for onto, the boundary for between.
        virtual void itemsDropped(const juce::var& /*description*/, int /*index*/) {}

        // Builds the rows again from the virtual operations.
        void refresh();
        List& getList() { return list; }
        juce::Viewport& getViewport() { return viewport; }

        const juce::SparseSet<int>& getSelection() const { return selection; }
        void setSelection(const juce::SparseSet<int>& newSelection);
        void selectOnly(int index);
        bool isSelected(int index) const { return selection.contains(index); }
        // Keeps a row in view.
        void scrollToShow(int index);
        // What the mouse carries in a drag: the selected rows.
        juce::ScaledImage makeDragImage();

        // The room below the list, for buttons.
        void setFooterHeight(int height);
        juce::Rectangle<int> getFooterArea() const;

        void paint(juce::Graphics& g) override;
        void resized() override;

    private:
        friend class ItemComponent;
        // A press on a row with these modifiers; true when the release
        // without a drag should click it.
        bool pressItem(int index, const juce::ModifierKeys& mods);

        juce::Viewport viewport;
        List list;
        juce::SparseSet<int> selection;
        int anchor = -1;
        int footerHeight = 0;
    };

    // The columns side by side, as wide as the browser.
    class ViewportComponent : public juce::Component
    {
    public:
        explicit ViewportComponent(ColumnBrowser& browser);
        void resized() override;

    private:
        ColumnBrowser& browser;
    };

    ColumnBrowser();
    ~ColumnBrowser() override;

    // The browser owns its columns.
    void addColumn(Column* column);
    int getNumColumns() const { return columns.size(); }
    Column* getColumn(int index) const { return columns[index]; }

    void resized() override;

private:
    ViewportComponent content;
    juce::OwnedArray<Column> columns;
};
