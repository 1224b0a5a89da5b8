#include <gtest/gtest.h>
#include <juce_events/juce_events.h>
#include <memory>

namespace
{
// JUCE's message manager lives for the whole run, so that tests can pump the
// message loop to see asynchronous updates arrive.
class JuceEnvironment : public ::testing::Environment
{
public:
    void SetUp() override { juce = std::make_unique<juce::ScopedJuceInitialiser_GUI>(); }
    void TearDown() override { juce.reset(); }

private:
    std::unique_ptr<juce::ScopedJuceInitialiser_GUI> juce;
};
} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new JuceEnvironment());
    return RUN_ALL_TESTS();
}
