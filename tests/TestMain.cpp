#include "support/JuceEnvironment.h"

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::AddGlobalTestEnvironment(new JuceEnvironment());
    return RUN_ALL_TESTS();
}
