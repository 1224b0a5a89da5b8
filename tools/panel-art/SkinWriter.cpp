#include "SkinWriter.h"

#include "PanelPainter.h"

namespace PanelArt
{
namespace
{
juce::XmlElement* addRect(juce::XmlElement& parent, const char* tag, const char* a, int x, const char* b, int y)
{
    auto* e = parent.createNewChildElement(tag);
    e->setAttribute(a, x);
    e->setAttribute(b, y);
    return e;
}

void addLinkAndActions(juce::XmlElement& e, const Control& c)
{
    if (c.link.isNotEmpty())
    {
        auto* link = e.createNewChildElement("links")->createNewChildElement("link");
        link->setAttribute("as", "connectedTo");
        link->setAttribute("param", c.link);
    }

    if (c.onClick.isEmpty() && c.onClickWithCtrl.isEmpty())
        return;

    auto* actions = e.createNewChildElement("actions");
    for (const auto& [type, event] : { std::pair{ "onClick", c.onClick }, std::pair{ "onClickWithCtrl", c.onClickWithCtrl } })
    {
        if (event.isEmpty())
            continue;
        auto* action = actions->createNewChildElement("action");
        action->setAttribute("type", type);
        action->setAttribute("event", event);
    }
}

juce::String argb(juce::Colour c)
{
    return juce::String::toHexString((int) c.getARGB()).paddedLeft('0', 8);
}
} // namespace

juce::String writeSkin(const Layout& layout)
{
    juce::XmlElement root("PluginEditor");
    root.setAttribute("application", "Quindrel");
    root.setAttribute("background", "Background.png");

    for (const auto& c : layout.controls)
    {
        auto* e = root.createNewChildElement(c.type);
        e->setAttribute("name", c.name);
        for (const auto& a : c.attributes)
            e->setAttribute(a.name, a.value);
        if (c.type == "Display")
        {
            e->setAttribute("backgroundColour", argb(displayBackground()));
            e->setAttribute("caretColour", argb(displayInk()));
            e->setAttribute("readonly", "no");
        }

        addLinkAndActions(*e, c);

        if (c.type == "NumericDisplay")
        {
            addRect(*e, "size", "width", c.bounds.getWidth(), "height", c.bounds.getHeight());
            auto* digits = e->createNewChildElement("digits");
            if (c.digits.size() == 1)
                digits->setAttribute("resource", c.digits.front().resource);
            else
                for (const auto& d : c.digits)
                    digits->createNewChildElement("gfx")->setAttribute("resource", d.resource);
        }
        else if (c.type == "PatternNumberDisplay")
        {
            auto* gfx = e->createNewChildElement("gfx");
            const char* const keys[] = { "firstDigit", "secondDigit", "thirdDigit", "fourthDigit" };
            for (size_t i = 0; i < c.digits.size() && i < 4; ++i)
                gfx->setAttribute(keys[i], c.digits[i].resource);
        }
        else
        {
            auto* gfx = e->createNewChildElement("gfx");
            gfx->setAttribute("resource", c.resource);
            if (c.type == "Display")
            {
                gfx->setAttribute("fontHeight", PanelPainter::glyphHeight);
                gfx->setAttribute("firstASCII", " ");
            }
            else
                gfx->setAttribute("framesNum", c.frames);
        }

        addRect(*e, "pos", "left", c.bounds.getX(), "top", c.bounds.getY());
        if (c.type != "NumericDisplay")
            addRect(*e, "size", "width", c.bounds.getWidth(), "height", c.bounds.getHeight());
    }

    juce::XmlElement::TextFormat format;
    format.newLineChars = "\n";
    format.lineWrapLength = 200;
    return root.toString(format);
}
} // namespace PanelArt
