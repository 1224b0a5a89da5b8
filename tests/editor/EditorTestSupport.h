#pragma once

// Small skins written by the tests, a Quindrel with its panel open, and a
// hand on the mouse. Every frame of a test strip is one solid colour, so the
// frame a control shows can be read from one pixel of its picture.

#include "editor/BasePluginEditor.h"
#include "editor/PluginEditorWindow.h"
#include "editor/ResourceLoader.h"
#include "plugin/Quindrel.h"

#include <gtest/gtest.h>

namespace editortest
{
inline juce::Colour frameColour(int frame)
{
    return juce::Colour::fromRGB((juce::uint8)(30 + 7 * frame), (juce::uint8)(200 - 5 * frame), (juce::uint8)(17 * frame % 256));
}

const juce::Colour backgroundColour = juce::Colour::fromRGB(20, 40, 60);
const juce::Colour leftoverColour = juce::Colour::fromRGB(255, 0, 255);

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
    const auto picture = component.createComponentSnapshot(component.getLocalBounds(), true, 1.0f);
    return frameOf(picture.getPixelAt(x, y));
}

inline void pump(int milliseconds = 30)
{
    juce::MessageManager::getInstance()->runDispatchLoopUntil(milliseconds);
}

// A skin folder of its own, taken as the panel's skin while it lives.
class TestSkin
{
public:
    TestSkin()
    {
        folder.createDirectory();
        setSkinDirectory(folder);
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
        g.setColour(leftoverColour);
        g.fillRect(0, frames * frameHeight, width, leftoverRows);
        writeImage(name, image);
    }

    void writeBackground(int width, int height) const
    {
        juce::Image image(juce::Image::RGB, width, height, true);
        image.clear(image.getBounds(), backgroundColour);
        writeImage("Background.png", image);
    }

    // Writes skin.xml with these elements inside the root.
    void writeSkin(const juce::String& elements, const juce::String& root = "PluginEditor") const
    {
        folder.getChildFile("skin.xml").replaceWithText("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + root + " application=\"Quindrel\">\n" + elements + "\n</" + root + ">\n");
    }

    juce::File getFolder() const { return folder; }

private:
    juce::File folder = juce::File::createTempFile("skin");
};

// A Quindrel with its panel open, as a host holds them.
class OpenPanel
{
public:
    OpenPanel()
        : plugin(Quindrel::createInstance(PluginPaths{}))
        , window(dynamic_cast<PluginEditorWindow*>(plugin->createEditor()))
    {
        pump(10);
    }

    ~OpenPanel() { window.reset(); }

    BasePluginEditor& editor() { return window->getEditor(); }
    Parameter& parameter(const juce::String& name) { return *plugin->getParameterManager().getParameter(name); }

    template <typename Control>
    Control& control(const juce::String& name)
    {
        auto* found = dynamic_cast<Control*>(editor().findControl(name));
        if (found == nullptr)
            throw std::runtime_error(("no control " + name).toStdString());
        return *found;
    }

    std::unique_ptr<Quindrel> plugin;
    std::unique_ptr<PluginEditorWindow> window;
};

// A mouse event on component at (x, y), pressed at down.
inline juce::MouseEvent mouseAt(juce::Component& component, juce::Point<float> position, juce::Point<float> down = {},
                                juce::ModifierKeys mods = juce::ModifierKeys(juce::ModifierKeys::leftButtonModifier),
                                int clicks = 1)
{
    const auto now = juce::Time::getCurrentTime();
    return juce::MouseEvent(juce::Desktop::getInstance().getMainMouseSource(), position, mods, 1.0f, 0.0f, 0.0f, 0.0f, 0.0f,
                            &component, &component, now, down, now, clicks, position != down);
}

inline juce::ModifierKeys withCtrl()
{
    return juce::ModifierKeys(juce::ModifierKeys::leftButtonModifier | juce::ModifierKeys::ctrlModifier);
}

// Press, drag through the points, release at the last one.
inline void drag(juce::Component& component, juce::Point<float> from, std::initializer_list<juce::Point<float>> path,
                 juce::ModifierKeys mods = juce::ModifierKeys(juce::ModifierKeys::leftButtonModifier))
{
    component.mouseDown(mouseAt(component, from, from, mods));
    juce::Point<float> last = from;
    for (auto point : path)
    {
        component.mouseDrag(mouseAt(component, point, from, mods));
        last = point;
    }
    component.mouseUp(mouseAt(component, last, from, mods.withoutMouseButtons()));
}

inline void click(juce::Component& component, juce::ModifierKeys mods = juce::ModifierKeys(juce::ModifierKeys::leftButtonModifier))
{
    const juce::Point<float> centre(component.getWidth() * 0.5f, component.getHeight() * 0.5f);
    component.mouseDown(mouseAt(component, centre, centre, mods));
    component.mouseUp(mouseAt(component, centre, centre, mods.withoutMouseButtons()));
}

// Counts what the synchronous side of a parameter hears.
struct GestureLog : Parameter::Listener
{
    void parameterChanged(Parameter&) override { ++changes; }
    void parameterGestureBegin(Parameter&) override { ++begins; }
    void parameterGestureEnd(Parameter&) override { ++ends; }
    int changes = 0, begins = 0, ends = 0;
};
} // namespace editortest
