#include "editor/FileChoosers.h"

namespace FileChoosers
{
void launch(std::unique_ptr<juce::FileChooser>& holder, juce::Component& owner, Mode mode, const juce::String& title,
            const juce::File& start, const juce::String& wildcard, std::function<void(const juce::File&)> chosen)
{
    holder = std::make_unique<juce::FileChooser>(title, start, wildcard);
    const int flags = juce::FileBrowserComponent::canSelectFiles | (mode == Mode::load ? juce::FileBrowserComponent::openMode
                                                                                       : juce::FileBrowserComponent::saveMode | juce::FileBrowserComponent::warnAboutOverwriting);

    holder->launchAsync(flags, [safe = juce::Component::SafePointer<juce::Component>(&owner), chosen = std::move(chosen)](const juce::FileChooser& done)
                        {
                            const auto file = done.getResult();
                            if (safe != nullptr && file != juce::File())
                                chosen(file); });
}
} // namespace FileChoosers

juce::File withDefaultExtension(const juce::File& file, const juce::String& extension)
{
    return file.getFileExtension().isEmpty() ? file.withFileExtension(extension) : file;
}
