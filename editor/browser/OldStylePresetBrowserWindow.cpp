#include "editor/browser/OldStylePresetBrowserWindow.h"

#include "editor/DefaultLookAndFeel.h"
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
    const auto start = plugin.getLastDirectory();
    int flags = juce::FileBrowserComponent::openMode | juce::FileBrowserComponent::canSelectFiles;
    const bool saving = action == FileAction::savePreset || action == FileAction::saveBank;
    if (saving)
        flags = juce::FileBrowserComponent::saveMode | juce::FileBrowserComponent::canSelectFiles | juce::FileBrowserComponent::warnAboutOverwriting;

    switch (action)
    {
        case FileAction::loadPreset:
            chooser = std::make_unique<juce::FileChooser>("Load single preset", start, plugin.getPresetLoadWildcard());
            break;
        case FileAction::savePreset:
            chooser = std::make_unique<juce::FileChooser>("Save current settings as preset", start, "*" + plugin.getPresetExtension());
            break;
        case FileAction::loadBank:
            chooser = std::make_unique<juce::FileChooser>("Load preset bank", start, plugin.getBankLoadWildcard());
            break;
        case FileAction::saveBank:
            chooser = std::make_unique<juce::FileChooser>("Save preset bank", start, "*" + plugin.getBankExtension());
            break;
    }

    chooser->launchAsync(flags, [safe = juce::Component::SafePointer<OldStylePresetBrowserWindow>(this), action](const juce::FileChooser& done)
                         {
                             if (safe == nullptr || done.getResult() == juce::File())
                                 return;
                             switch (action)
                             {
                                 case FileAction::loadPreset: safe->loadPresetFile(done.getResult()); break;
                                 case FileAction::savePreset: safe->savePresetFile(done.getResult()); break;
                                 case FileAction::loadBank: safe->loadBankFile(done.getResult()); break;
                                 case FileAction::saveBank: safe->saveBankFile(done.getResult()); break;
                             } });
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
