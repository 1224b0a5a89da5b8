#include "editor/SkinControls.h"

#include "editor/GFXAnimation.h"
#include "editor/GFXButton.h"
#include "editor/GFXDisplay.h"
#include "editor/GFXKnob.h"
#include "editor/GFXMultiStateButton.h"
#include "editor/GFXPanel.h"
#include "editor/GFXToggleButton.h"
#include "editor/NumericDisplay.h"
#include "editor/PatternNumberDisplay.h"

namespace
{
template <typename Control>
std::unique_ptr<juce::Component> make(const juce::String& name, GUIController*& controller)
{
    auto control = std::make_unique<Control>();
    control->setName(name);
    controller = control.get();
    return control;
}
} // namespace

std::unique_ptr<juce::Component> createSkinControl(const juce::String& tag, const juce::String& name, GUIController*& controller)
{
    controller = nullptr;

    if (tag == "Knob")
        return make<GFXKnob>(name, controller);
    if (tag == "Switch")
        return make<GFXSwitch>(name, controller);
    if (tag == "Animation")
        return make<GFXAnimation>(name, controller);
    if (tag == "Button")
        return make<GFXButton>(name, controller);
    if (tag == "ToggleButton")
        return make<GFXToggleButton>(name, controller);
    if (tag == "MultiStateButton")
        return make<GFXMultiStateButton>(name, controller);
    if (tag == "Display")
        return make<GFXDisplay>(name, controller);
    if (tag == "DisplayFloat")
        return make<GFXDisplayFloat>(name, controller);
    if (tag == "Rocker")
        return make<GFXRocker>(name, controller);
    if (tag == "Panel")
        return make<GFXPanel>(name, controller);
    if (tag == "NumericDisplay")
        return make<NumericDisplay>(name, controller);
    if (tag == "PatternNumberDisplay")
        return make<PatternNumberDisplay>(name, controller);

    return nullptr;
}
