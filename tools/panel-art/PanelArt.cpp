// quindrel-panel-art: draws the front panel and writes the skin.
//
//   quindrel-panel-art DIR [--preview DIR]
//
// Writes skin.xml, Background.png, Fonts.png and every control's strip of
// frames into DIR, removing images there that the skin no longer uses. The
// same source gives the same bytes. With --preview it also writes
// panel-rest.png (every control in frame 0) and panel-lively.png (a panel in
// play) for looking at the whole panel without the editor.

#include "PanelPainter.h"
#include "Preview.h"
#include "SkinWriter.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <iostream>
#include <map>

namespace
{
using namespace PanelArt;

juce::MemoryBlock encodePng(const juce::Image& image)
{
    juce::MemoryOutputStream out;
    juce::PNGImageFormat().writeImageToStream(image, out);
    return out.getMemoryBlock();
}

// A strip of frames, each over its own piece of the background.
juce::Image drawStrip(const PanelPainter& painter, const juce::Image& background, const Control& c)
{
    const int w = c.bounds.getWidth(), h = c.bounds.getHeight();
    juce::Image strip(juce::Image::RGB, w, h * c.frames, true);
    juce::Graphics g(strip);
    for (int f = 0; f < c.frames; ++f)
    {
        juce::Graphics::ScopedSaveState state(g);
        g.reduceClipRegion(0, f * h, w, h);
        g.setOrigin(0, f * h);
        g.drawImage(background, 0, 0, w, h, c.bounds.getX(), c.bounds.getY(), w, h);
        painter.paintFrame(g, c, f);
    }
    return strip;
}

juce::Image drawDigits(const PanelPainter& painter, const DigitImage& d)
{
    juce::Image strip(juce::Image::RGB, d.width, d.height * d.frames, true);
    juce::Graphics g(strip);
    for (int f = 0; f < d.frames; ++f)
    {
        juce::Graphics::ScopedSaveState state(g);
        g.reduceClipRegion(0, f * d.height, d.width, d.height);
        g.setOrigin(0, f * d.height);
        painter.paintDigit(g, d, f);
    }
    return strip;
}

std::map<juce::String, juce::MemoryBlock> makeFiles(const Layout& layout, const PanelPainter& painter, Preview& preview)
{
    std::map<juce::String, juce::MemoryBlock> files;
    juce::Image background(juce::Image::RGB, panelWidth, panelHeight, true);
    {
        juce::Graphics g(background);
        painter.paintBackground(g, layout);
    }
    files["Background.png"] = encodePng(background);
    preview.setBackground(background);

    const auto font = PanelPainter::makeFontImage();
    files["Fonts.png"] = encodePng(font);
    preview.setFont(font);

    for (const auto& c : layout.controls)
    {
        for (const auto& d : c.digits)
        {
            if (files.count(d.resource) == 0)
            {
                const auto strip = drawDigits(painter, d);
                files[d.resource] = encodePng(strip);
                preview.addStrip(d.resource, strip);
            }
        }

        if (c.digits.empty() && c.frames > 0 && files.count(c.resource) == 0)
        {
            const auto strip = drawStrip(painter, background, c);
            files[c.resource] = encodePng(strip);
            preview.addStrip(c.resource, strip);
        }
    }

    files["skin.xml"] = juce::MemoryBlock(writeSkin(layout).toRawUTF8(), writeSkin(layout).getNumBytesAsUTF8());
    return files;
}

bool writeFiles(const juce::File& dir, const std::map<juce::String, juce::MemoryBlock>& files)
{
    if (!dir.createDirectory())
    {
        std::cerr << "quindrel-panel-art: cannot create " << dir.getFullPathName() << "\n";
        return false;
    }

    for (const auto& stale : dir.findChildFiles(juce::File::findFiles, false, "*.png"))
        if (files.count(stale.getFileName()) == 0)
            stale.deleteFile();

    for (const auto& [name, data] : files)
    {
        const auto file = dir.getChildFile(name);
        juce::MemoryBlock old;
        // Files that did not change keep their time, so the build does not redo them.
        if (file.existsAsFile() && file.loadFileAsData(old) && old == data)
            continue;
        if (!file.replaceWithData(data.getData(), data.getSize()))
        {
            std::cerr << "quindrel-panel-art: cannot write " << file.getFullPathName() << "\n";
            return false;
        }
    }
    return true;
}
} // namespace

int main(int argc, char** argv)
{
    juce::ScopedJuceInitialiser_GUI gui;

    juce::StringArray args;
    for (int i = 1; i < argc; ++i)
        args.add(argv[i]);

    juce::String previewDir;
    const int previewAt = args.indexOf("--preview");
    if (previewAt >= 0)
    {
        if (previewAt + 1 >= args.size())
        {
            std::cerr << "quindrel-panel-art: --preview needs a folder\n";
            return 1;
        }
        previewDir = args[previewAt + 1];
        args.removeRange(previewAt, 2);
    }

    if (args.size() != 1 || args[0].startsWith("-"))
    {
        std::cerr << "usage: quindrel-panel-art DIR [--preview DIR]\n";
        return 1;
    }

    const auto layout = buildLayout();
    const PanelPainter painter;
    if (!painter.hasFonts())
    {
        std::cerr << "quindrel-panel-art: the embedded DejaVu fonts are missing\n";
        return 1;
    }
    Preview preview(layout);
    const auto files = makeFiles(layout, painter, preview);

    const auto cwd = juce::File::getCurrentWorkingDirectory();
    if (!writeFiles(cwd.getChildFile(args[0]), files))
        return 1;

    if (previewDir.isNotEmpty())
    {
        const auto dir = cwd.getChildFile(previewDir);
        dir.createDirectory();
        const auto rest = preview.compose(false);
        const auto lively = preview.compose(true);
        if (!dir.getChildFile("panel-rest.png").replaceWithData(encodePng(rest).getData(), encodePng(rest).getSize()) || !dir.getChildFile("panel-lively.png").replaceWithData(encodePng(lively).getData(), encodePng(lively).getSize()))
        {
            std::cerr << "quindrel-panel-art: cannot write the previews in " << dir.getFullPathName() << "\n";
            return 1;
        }
    }
    return 0;
}
