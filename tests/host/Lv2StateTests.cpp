// The built LV2 plug-in as a host that uses lilv keeps a song: the state
// extension saves an instance whose kit and knobs were changed
// (lilv_state_new_from_instance), and a fresh instance takes it back
// (lilv_state_restore) whole. No JUCE here: only lilv and the LV2 headers.
// That the restored song plays the same is heard through JUCE's LV2 hosting,
// which calls lilv the same way.

#include <gtest/gtest.h>
#include <lilv/lilv.h>
#include <lv2/atom/forge.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/midi/midi.h>
#include <lv2/options/options.h>
#include <lv2/patch/patch.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string>
#include <vector>

namespace
{
constexpr int blockSize = 512;

// The features JUCE's LV2 plug-ins require of a host: URID map, options and bounded blocks.
struct Host
{
    Host()
    {
        auto* bundle = lilv_new_file_uri(world, nullptr, QUINDREL_LV2_DIR "/Quindrel.lv2/");
        lilv_world_load_bundle(world, bundle);
        lilv_node_free(bundle);
        auto* uri = lilv_new_uri(world, QUINDREL_LV2_URI);
        plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world), uri);
        lilv_node_free(uri);
        for (const char* key : { LV2_BUF_SIZE__maxBlockLength, LV2_BUF_SIZE__minBlockLength, LV2_BUF_SIZE__nominalBlockLength })
            options.push_back({ LV2_OPTIONS_INSTANCE, 0, map(key), sizeof(int32_t), map(LV2_ATOM__Int), &block });
        options.push_back({ LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr });
        featureList[1].data = options.data();
    }
    ~Host() { lilv_world_free(world); }

    LV2_URID map(const char* uri)
    {
        const auto found = std::find(uris.begin(), uris.end(), uri);
        if (found != uris.end())
            return (LV2_URID) (found - uris.begin()) + 1;
        uris.push_back(uri);
        return (LV2_URID) uris.size();
    }

    LilvWorld* world = lilv_world_new();
    const LilvPlugin* plugin = nullptr;
    std::vector<std::string> uris;
    int32_t block = blockSize;
    std::vector<LV2_Options_Option> options;
    LV2_URID_Map mapFeature{ this, [](LV2_URID_Map_Handle h, const char* uri)
                             { return static_cast<Host*>(h)->map(uri); } };
    LV2_Feature featureList[3] = { { LV2_URID__map, &mapFeature }, { LV2_OPTIONS__options, nullptr }, { LV2_BUF_SIZE__boundedBlockLength, nullptr } };
    const LV2_Feature* features[4] = { &featureList[0], &featureList[1], &featureList[2], nullptr };
};

// One running instance with every port connected.
struct Instance
{
    explicit Instance(Host& hostToUse)
        : host(hostToUse)
        , instance(lilv_plugin_instantiate(host.plugin, 48000.0, host.features))
    {
        if (instance == nullptr)
            return;
        auto* audioPort = lilv_new_uri(host.world, LV2_CORE__AudioPort);
        auto* atomPort = lilv_new_uri(host.world, LV2_ATOM__AtomPort);
        auto* inputPort = lilv_new_uri(host.world, LV2_CORE__InputPort);
        const auto count = lilv_plugin_get_num_ports(host.plugin);
        controls.assign(count, 0.0f);
        lilv_plugin_get_port_ranges_float(host.plugin, nullptr, nullptr, controls.data());
        for (uint32_t p = 0; p < count; ++p)
        {
            const auto* port = lilv_plugin_get_port_by_index(host.plugin, p);
            void* buffer = &(controls[p] = std::isnan(controls[p]) ? 0.0f : controls[p]);
            if (lilv_port_is_a(host.plugin, port, audioPort))
                buffer = audio.emplace_back(blockSize, 0.0f).data();
            else if (lilv_port_is_a(host.plugin, port, atomPort))
                buffer = (lilv_port_is_a(host.plugin, port, inputPort) ? midiIn : eventsOut).data();
            lilv_instance_connect_port(instance, p, buffer);
        }
        for (auto* node : { audioPort, atomPort, inputPort })
            lilv_node_free(node);
        lilv_instance_activate(instance);
    }

    ~Instance()
    {
        if (instance != nullptr)
            lilv_instance_deactivate(instance), lilv_instance_free(instance);
    }

    // One block, with a MIDI message of up to three bytes and knobs set as a
    // host sets them, by patch:Set messages.
    void run(std::vector<uint8_t> message = {}, const std::map<std::string, float>& knobs = {})
    {
        LV2_Atom_Forge forge;
        lv2_atom_forge_init(&forge, &host.mapFeature);
        lv2_atom_forge_set_buffer(&forge, reinterpret_cast<uint8_t*>(midiIn.data()), sizeof midiIn);
        LV2_Atom_Forge_Frame sequence, object;
        lv2_atom_forge_sequence_head(&forge, &sequence, 0);
        for (const auto& [uri, value] : knobs)
        {
            lv2_atom_forge_frame_time(&forge, 0);
            lv2_atom_forge_object(&forge, &object, 0, host.map(LV2_PATCH__Set));
            lv2_atom_forge_key(&forge, host.map(LV2_PATCH__property));
            lv2_atom_forge_urid(&forge, host.map((QUINDREL_LV2_URI ":" + uri).c_str()));
            lv2_atom_forge_key(&forge, host.map(LV2_PATCH__value));
            lv2_atom_forge_float(&forge, value);
            lv2_atom_forge_pop(&forge, &object);
        }
        if (!message.empty())
        {
            lv2_atom_forge_frame_time(&forge, 10);
            lv2_atom_forge_atom(&forge, (uint32_t) message.size(), host.map(LV2_MIDI__MidiEvent));
            lv2_atom_forge_write(&forge, message.data(), (uint32_t) message.size());
        }
        lv2_atom_forge_pop(&forge, &sequence);

        auto* out = reinterpret_cast<LV2_Atom*>(eventsOut.data());
        *out = { (uint32_t) (sizeof eventsOut - sizeof(LV2_Atom)), host.map(LV2_ATOM__Chunk) };
        lilv_instance_run(instance, blockSize);
    }

    LilvState* save() const
    {
        return lilv_state_new_from_instance(host.plugin, instance, &host.mapFeature, nullptr, nullptr, nullptr, nullptr,
                                            nullptr, nullptr, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE, host.features);
    }

    Host& host;
    LilvInstance* instance;
    std::vector<std::vector<float>> audio;
    std::vector<float> controls;
    std::array<uint64_t, 1024> midiIn{}, eventsOut{};
};

} // namespace

TEST(PluginLv2State, TheStateExtensionKeepsTheSongForAFreshInstance)
{
    Host host;
    ASSERT_NE(host.plugin, nullptr) << "no plug-in " << QUINDREL_LV2_URI << " in " << QUINDREL_LV2_DIR;
    Instance original(host);
    ASSERT_TRUE(original.instance != nullptr && original.audio.size() == 24u) << "the plug-in refused to start";

    // Another kit, then knobs moved as a host moves them.
    original.run({ 0xc0, 7 });
    original.run({}, { { "bass_drum_decay", 0.875f }, { "snare_drum_level", 0.25f }, { "main_volume", 0.375f } });

    // The song as the host saves it, opened by a fresh instance that has run.
    LilvState* saved = original.save();
    ASSERT_NE(saved, nullptr);
    Instance restored(host);
    restored.run();
    LilvState* before = restored.save();
    EXPECT_FALSE(lilv_state_equals(saved, before)) << "the kit and knobs did not reach the plug-in's own state (its knobs are no ports)";
    lilv_state_free(before);
    lilv_state_restore(saved, restored.instance, nullptr, nullptr, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE, host.features);
    LilvState* again = restored.save();
    EXPECT_TRUE(lilv_state_equals(saved, again));
    lilv_state_free(saved);
    lilv_state_free(again);
}
