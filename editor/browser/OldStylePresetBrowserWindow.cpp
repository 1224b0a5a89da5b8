#include "editor/browser/OldStylePresetBrowserWindow.h"

#include "editor/DefaultLookAndFeel.h"
#include "editor/FileChoosers.h"
#include "parameters/ParameterIds.h"
#include "plugin/BasePluginOldStyle.h"

namespace
{
constexpr int margin = 10;
constexpr int captionWidth = 56;
constexpr int fileButtonWidth = 80;
} // namespace

OldStylePresetBrowserWindow::OldStylePresetBrowserWindow(BasePluginOldStyle& pluginToUse)
    : WindowComponent("Preset Browser")
    , plugin(pluginToUse)
    , browser(pluginToUse)
{
    addAndMakeVisible(browser);

    // Names that tell the two rows apart.
    presetLoad.setName("Load preset");
    presetSave.setName("Save current preset");
    bankLoad.setName("Load preset bank");
    bankSave.setName("Save current preset bank");
    presetLoad.onClick = [this]
    { openChooser(FileAction::loadPreset); };
    presetSave.onClick = [this]
    { openChooser(FileAction::savePreset); };
    bankLoad.onClick = [this]
    { openChooser(FileAction::loadBank); };
    bankSave.onClick = [this]
    { openChooser(FileAction::saveBank); };
    for (auto* button : { &presetLoad, &presetSave, &bankLoad, &bankSave })
        addAndMakeVisible(*button);

    auto& parameters = plugin.getParameterManager();
    parameters.addAsyncListener(ParameterIds::currentPresetNumber, this);
    parameters.addAsyncListener(ParameterIds::currentPresetName, this);
    plugin.addListener(this);

    setSize(width, height);
}

OldStylePresetBrowserWindow::~OldStylePresetBrowserWindow()
{
    plugin.removeListener(this);
    auto& parameters = plugin.getParameterManager();
    parameters.removeAsyncListener(ParameterIds::currentPresetNumber, this);
    parameters.removeAsyncListener(ParameterIds::currentPresetName, this);
}

void OldStylePresetBrowserWindow::parameterChanged(Parameter& parameter)
{
    if (parameter.getId() == ParameterIds::currentPresetNumber)
        browser.followCurrentPreset();
    else
        browser.refresh();
}

void OldStylePresetBrowserWindow::pluginStateRestored(BasePlugin&)
{
    browser.followCurrentPreset();
}

void OldStylePresetBrowserWindow::showStateChanged()
{
    if (isShown())
        browser.followCurrentPreset();
}

//==============================================================================
bool OldStylePresetBrowserWindow::loadPresetFile(const juce::File& file)
{
    const bool loaded = file != juce::File() && plugin.loadPresetFile(file, plugin.getCurrentPreset());
    browser.refresh();
    return loaded;
}

bool OldStylePresetBrowserWindow::savePresetFile(const juce::File& file)
{
    const bool saved = file != juce::File() && plugin.savePresetFile(withDefaultExtension(file, plugin.getPresetExtension()));
    browser.refresh();
    return saved;
}

bool OldStylePresetBrowserWindow::loadBankFile(const juce::File& file)
{
    const bool loaded = file != juce::File() && plugin.loadBankFile(file);
    browser.followCurrentPreset();
    return loaded;
}

bool OldStylePresetBrowserWindow::saveBankFile(const juce::File& file)
{
    const bool saved = file != juce::File() && plugin.saveBankFile(withDefaultExtension(file, plugin.getBankExtension()));
    browser.refresh();
    return saved;
}

void OldStylePresetBrowserWindow::openChooser(FileAction action)
{
    using FileChoosers::Mode;
    const auto start = plugin.getLastDirectory();
    const auto open = [this, start](Mode mode, const juce::String& title, const juce::String& wildcard, bool (OldStylePresetBrowserWindow::*chosen)(const juce::File&))
    {
        FileChoosers::launch(chooser, *this, mode, title, start, wildcard, [this, chosen](const juce::File& file)
                             { (this->*chosen)(file); });
    };

    switch (action)
    {
        case FileAction::loadPreset:
            open(Mode::load, "Load single preset", plugin.getPresetLoadWildcard(), &OldStylePresetBrowserWindow::loadPresetFile);
            break;
        case FileAction::savePreset:
            open(Mode::save, "Save current settings as preset", "*" + plugin.getPresetExtension(), &OldStylePresetBrowserWindow::savePresetFile);
            break;
        case FileAction::loadBank:
            open(Mode::load, "Load preset bank", plugin.getBankLoadWildcard(), &OldStylePresetBrowserWindow::loadBankFile);
            break;
        case FileAction::saveBank:
            open(Mode::save, "Save preset bank", "*" + plugin.getBankExtension(), &OldStylePresetBrowserWindow::saveBankFile);
            break;
    }
}

//==============================================================================
void OldStylePresetBrowserWindow::paint(juce::Graphics& g)
{
    WindowComponent::paint(g);

    g.setColour(juce::Colour(DefaultLookAndFeel::grey1));
    g.setFont(DefaultLookAndFeel::getPanelFont(15.0f, true));
    for (auto* first : { &presetLoad, &bankLoad })
        g.drawText(first == &presetLoad ? "Preset" : "Bank", first->getX() - captionWidth, first->getY(), captionWidth - 6,
                   first->getHeight(), juce::Justification::centredRight, false);
}

void OldStylePresetBrowserWindow::resized()
{
    WindowComponent::resized();

    auto area = getClientArea().reduced(margin);
    auto bottom = area.removeFromBottom(SettingsLayout::buttonHeight);
    area.removeFromBottom(margin);
    browser.setBounds(area);

    const auto place = [&bottom](TextButtonEx& button)
    {
        button.setBounds(bottom.removeFromLeft(fileButtonWidth));
        bottom.removeFromLeft(SettingsLayout::gap);
    };
    bottom.removeFromLeft(captionWidth);
    place(presetLoad);
    place(presetSave);
    bottom.removeFromLeft(2 * margin + captionWidth);
    place(bankLoad);
    place(bankSave);
}
