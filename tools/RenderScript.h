#pragma once

#include "RenderOptions.h"

#include <juce_core/juce_core.h>

#include <functional>
#include <vector>

class BasePlugin;

// A script of timed user actions for quindrel-render, one a line, fields
// separated by tabs:
//
//     SECONDS  event  EVENT NAME
//     SECONDS  param  PARAMETER NAME  NORMALISED VALUE
//     SECONDS  click  COMPONENT NAME
//
// A click needs the panel open: it goes to the first shown component of that
// name, a window's button, a tab or a row of a list.
// Blank lines and lines that begin with '#' are passed over. Reading checks
// the form of each line; resolving checks the names against the plug-in's
// own tables, so that every mistake is found before anything renders.
class RenderScript
{
public:
    struct Line
    {
        int number = 0; // in the file, from 1
        double seconds = 0.0;
        bool isEvent = true;
        bool isClick = false; // a click on the panel, by component name
        juce::String name;
        float value = 0.0f; // a parameter's normalised value
        int id = -1;        // the event's uid or the parameter's id, once resolved
    };

    // Throws BadInput naming the file and the line.
    static RenderScript read(const juce::File& file);
    static RenderScript parse(const juce::String& text, const juce::String& source);

    // Throws BadInput for a name the plug-in does not have.
    void resolve(BasePlugin& plugin);

    // Throws BadInput for a click when there is no panel, or for the name of
    // a component that the panel does not have.
    void resolveClicks(const std::function<bool(const juce::String&)>* hasComponent) const;

    // Throws BadInput for the first line that falls after `seconds`.
    void checkFitsIn(double seconds) const;

    const std::vector<Line>& getLines() const { return lines; }
    double getLastTime() const;

private:
    juce::String where(const Line& line) const;

    juce::String source;
    std::vector<Line> lines;
};

// Plays a resolved script into a plug-in during a render, on the message
// thread, as a user at the panel or a host's automation would: each line at
// the start of the block that holds its time, lines of one block in file order.
class ScriptPlayer
{
public:
    ScriptPlayer(const RenderScript& script, BasePlugin& plugin, double sampleRate);

    // How an event line is fired. By default the plug-in's own handleEvent;
    // a render with an editor sets this so that the event acts as a click on
    // a control bound to it would, the editor's own events first.
    std::function<void(int uid)> fireEvent;
    // How a click line reaches the panel.
    std::function<void(const juce::String& name)> click;

    // Applies every line not yet applied whose time falls before the sample
    // `blockEnd`. True if any was.
    bool applyUntil(juce::int64 blockEnd);

private:
    // The one place where a line reaches the plug-in.
    void apply(const RenderScript::Line& line);

    BasePlugin& plugin;
    std::vector<std::pair<juce::int64, const RenderScript::Line*>> pending; // in file order
};
