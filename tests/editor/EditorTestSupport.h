#pragma once

// Small skins written by the tests, a Quindrel with its panel open, and a
// hand on the mouse. Every frame of a test strip is one solid colour, so the
// frame a control shows can be read from one pixel of its picture.

#include "editor/BasePluginEditor.h"
#include "editor/PluginEditorWindow.h"
#include "editor/ResourceLoader.h"
#include "plugin/PluginTestHost.h"

#include <gtest/gtest.h>

namespace editortest
{
inline juce::Colour frameColour(int frame)
{
    return juce::Colour::fromRGB((juce::uint8) (30 + 7 * frame), (juce::uint8) (200 - 5 * frame), (juce::uint8) (17 * frame % 256));
}

const juce::Colour backgroundColour = juce::Colour::fromRGB(20, 40, 60);

// The frame whose colour that is, or -1.
inline int frameOf(juce::Colour colour)
{
    for (int frame = 0; frame < 64; ++frame)
        if (frameColour(frame) == colour.withAlpha(1.0f))
            return frame;
    return -1;
}

// The frame a component shows, read at one of its pixels.
inline int shownFrame(juce::Component& component, int x = 1, int y = 1)
{
    return frameOf(component.createComponentSnapshot(component.getLocalBounds(), true, 1.0f).getPixelAt(x, y));
}

inline void pump(int milliseconds = 30)
{
    juce::MessageManager::getInstance()->runDispatchLoopUntil(milliseconds);
}

// A skin folder of its own, taken as the panel's skin while it lives.
class TestSkin
{
public:
    explicit TestSkin(const std::function<void(const TestSkin&)>& write = {})
    {
        folder.createDirectory();
        setSkinDirectory(folder);
        if (write)
            write(*this);
    }

    ~TestSkin()
    {
        setSkinDirectory({});
        folder.deleteRecursively();
    }

    void writeImage(const juce::String& name, const juce::Image& image) const
    {
        juce::FileOutputStream stream(folder.getChildFile(name));
        juce::PNGImageFormat().writeImageToStream(image, stream);
    }

    // A column of frames, each one solid colour; leftover rows are magenta.
    void writeStrip(const juce::String& name, int width, int frameHeight, int frames, int leftoverRows = 0) const
    {
        juce::Image image(juce::Image::RGB, width, frameHeight * frames + leftoverRows, true);
        juce::Graphics g(image);
        for (int frame = 0; frame < frames; ++frame)
        {
            g.setColour(frameColour(frame));
            g.fillRect(0, frame * frameHeight, width, frameHeight);
        }
        g.setColour(juce::Colours::magenta);
        g.fillRect(0, frames * frameHeight, width, leftoverRows);
        writeImage(name, image);
    }

    // The background and skin.xml with these elements inside the root.
    void writeSkin(int width, int height, const juce::String& elements, const juce::String& root = "PluginEditor") const
    {
        juce::Image image(juce::Image::RGB, width, height, true);
        image.clear(image.getBounds(), backgroundColour);
        writeImage("Background.png", image);
        folder.getChildFile("skin.xml").replaceWithText("<" + root + " application=\"Quindrel\">\n" + elements + "\n</" + root + ">\n");
    }

    juce::File getFolder() const { return folder; }

private:
    juce::File folder = juce::File::createTempFile("skin");
};

// A Quindrel played as a host plays it, with its panel open.
class OpenPanel : public PluginTestHost
{
public:
    explicit OpenPanel(const juce::File& settingsFile = {})
        : PluginTestHost(48000.0, 512, settingsFile)
    {
        reopen();
    }

    ~OpenPanel() { window.reset(); }

    // Closed and opened again, as a host does.
    void reopen()
    {
        window.reset();
        window.reset(dynamic_cast<PluginEditorWindow*>(plugin->createEditor()));
        pump(10);
    }

    BasePluginEditor& editor() { return window->getEditor(); }
    Parameter& parameter(const juce::String& name) { return *plugin->getParameterManager().getParameter(name); }

    template <typename Control>
    Control& control(const juce::String& name, juce::Component* parent = nullptr)
    {
        auto* found = dynamic_cast<Control*>(parent != nullptr ? BasePluginEditor::findControl(name, *parent) : editor().findControl(name));
        if (found == nullptr)
            throw std::runtime_error(("no control " + name).toStdString());
        return *found;
    }

    // An event as the click on its control fires it, then the updates it raised.
    void press(const juce::String& eventName)
    {
        const int uid = plugin->getEvents().getUid(eventName);
        if (uid < 0)
            throw std::runtime_error(("no event " + eventName).toStdString());
        editor().performEvent(uid);
        pump();
    }

    std::unique_ptr<PluginEditorWindow> window;
};

// A panel opened on a skin of the test's own, written by `write` first.
struct SkinnedPanel : TestSkin, OpenPanel
{
    explicit SkinnedPanel(const std::function<void(const TestSkin&)>& write)
        : TestSkin(write)
    {
    }
};

const juce::ModifierKeys leftButton(juce::ModifierKeys::leftButtonModifier);
const juce::ModifierKeys withCtrl(juce::ModifierKeys::leftButtonModifier | juce::ModifierKeys::ctrlModifier);

// A mouse event on component at (x, y), pressed at down.
inline juce::MouseEvent mouseAt(juce::Component& component, juce::Point<float> position, juce::Point<float> down = {},
                                juce::ModifierKeys mods = leftButton, int clicks = 1)
{
    const auto now = juce::Time::getCurrentTime();
    return juce::MouseEvent(juce::Desktop::getInstance().getMainMouseSource(), position, mods, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f,
                            &component, &component, now, down, now, clicks, position != down);
}

// The three halves of a gesture that starts at `from`.
inline void down(juce::Component& c, juce::Point<float> from, juce::ModifierKeys mods = leftButton) { c.mouseDown(mouseAt(c, from, from, mods)); }
inline void moveTo(juce::Component& c, juce::Point<float> to, juce::Point<float> from, juce::ModifierKeys mods = leftButton) { c.mouseDrag(mouseAt(c, to, from, mods)); }
inline void up(juce::Component& c, juce::Point<float> at, juce::Point<float> from) { c.mouseUp(mouseAt(c, at, from, {})); }

// Press, drag through the points, release at the last one.
inline void drag(juce::Component& component, juce::Point<float> from, std::initializer_list<juce::Point<float>> path, juce::ModifierKeys mods = leftButton)
{
    down(component, from, mods);
    for (auto point : path)
        moveTo(component, point, from, mods);
    component.mouseUp(mouseAt(component, path.size() > 0 ? *(path.end() - 1) : from, from, mods.withoutMouseButtons()));
}

inline void click(juce::Component& component, juce::ModifierKeys mods = leftButton)
{
    drag(component, component.getLocalBounds().getCentre().toFloat(), {}, mods);
}
} // namespace editortest
