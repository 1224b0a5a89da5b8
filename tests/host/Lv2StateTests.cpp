// The built LV2 plug-in as a host that uses lilv keeps a song: the state
// extension saves an instance whose knobs and kit were changed
// (lilv_state_new_from_instance), a fresh instance takes it back
// (lilv_state_restore), and both give the same state and play the same audio
// for the same MIDI. No JUCE here: only lilv and the LV2 headers. (The hosted
// tests of the JUCE program change modes, routing and a pattern too.)

#include <gtest/gtest.h>
#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/atom/forge.h>
#include <lv2/atom/util.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/midi/midi.h>
#include <lv2/options/options.h>
#include <lv2/patch/patch.h>
#include <lv2/state/state.h>
#include <lv2/time/time.h>
#include <lv2/urid/urid.h>

#include <array>
#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace
{
constexpr double sampleRate = 48000.0;
constexpr int blockSize = 512;

// The URID map every LV2 host provides.
class Urids
{
public:
    LV2_URID map(const char* uri)
    {
        const auto found = ids.find(uri);
        if (found != ids.end())
            return found->second;
        uris.emplace_back(uri);
        return ids[uri] = (LV2_URID) uris.size();
    }

    const char* unmap(LV2_URID id) const { return id >= 1 && id <= uris.size() ? uris[id - 1].c_str() : nullptr; }

    LV2_URID_Map mapFeature{ this, [](LV2_URID_Map_Handle h, const char* uri)
                             { return static_cast<Urids*>(h)->map(uri); } };
    LV2_URID_Unmap unmapFeature{ this, [](LV2_URID_Unmap_Handle h, LV2_URID id)
                                 { return static_cast<Urids*>(h)->unmap(id); } };

private:
    std::map<std::string, LV2_URID> ids;
    std::vector<std::string> uris;
};

class Host
{
public:
    Host()
    {
        world = lilv_world_new();
        auto* bundle = lilv_new_file_uri(world, nullptr, QUINDREL_LV2_DIR "/Quindrel.lv2/");
        lilv_world_load_bundle(world, bundle);
        lilv_node_free(bundle);
        auto* uri = lilv_new_uri(world, QUINDREL_LV2_URI);
        plugin = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world), uri);
        lilv_node_free(uri);

        maxBlock = minBlock = blockSize;
        options = {
            { LV2_OPTIONS_INSTANCE, 0, urids.map(LV2_BUF_SIZE__maxBlockLength), sizeof(int32_t), urids.map(LV2_ATOM__Int), &maxBlock },
            { LV2_OPTIONS_INSTANCE, 0, urids.map(LV2_BUF_SIZE__minBlockLength), sizeof(int32_t), urids.map(LV2_ATOM__Int), &minBlock },
            { LV2_OPTIONS_INSTANCE, 0, urids.map(LV2_BUF_SIZE__nominalBlockLength), sizeof(int32_t), urids.map(LV2_ATOM__Int), &maxBlock },
            { LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr },
        };
        featureList = {
            { LV2_URID__map, &urids.mapFeature },
            { LV2_URID__unmap, &urids.unmapFeature },
            { LV2_OPTIONS__options, options.data() },
            { LV2_BUF_SIZE__boundedBlockLength, nullptr },
        };
        for (auto& f : featureList)
            features.push_back(&f);
        features.push_back(nullptr);
    }

    ~Host() { lilv_world_free(world); }

    LilvWorld* world = nullptr;
    const LilvPlugin* plugin = nullptr;
    Urids urids;
    int32_t maxBlock = 0, minBlock = 0;
    std::vector<LV2_Options_Option> options;
    std::vector<LV2_Feature> featureList;
    std::vector<const LV2_Feature*> features;
};

// One running instance with every port connected.
class Instance
{
public:
    explicit Instance(Host& hostToUse)
        : host(hostToUse)
    {
        instance = lilv_plugin_instantiate(host.plugin, sampleRate, host.features.data());
        if (instance == nullptr)
            return;

        auto* audioClass = lilv_new_uri(host.world, LV2_CORE__AudioPort);
        auto* controlClass = lilv_new_uri(host.world, LV2_CORE__ControlPort);
        auto* atomClass = lilv_new_uri(host.world, LV2_ATOM__AtomPort);
        auto* inputClass = lilv_new_uri(host.world, LV2_CORE__InputPort);

        const auto count = lilv_plugin_get_num_ports(host.plugin);
        std::vector<float> defaults(count, 0.0f);
        lilv_plugin_get_port_ranges_float(host.plugin, nullptr, nullptr, defaults.data());
        controls.assign(count, 0.0f);
        for (uint32_t p = 0; p < count; ++p)
        {
            const auto* port = lilv_plugin_get_port_by_index(host.plugin, p);
            if (lilv_port_is_a(host.plugin, port, audioClass))
            {
                audio.emplace_back(blockSize, 0.0f);
                lilv_instance_connect_port(instance, p, audio.back().data());
            }
            else if (lilv_port_is_a(host.plugin, port, atomClass))
            {
                auto& buffer = lilv_port_is_a(host.plugin, port, inputClass) ? midiIn : eventsOut;
                buffer.assign(8192 / sizeof(uint64_t), 0);
                lilv_instance_connect_port(instance, p, buffer.data());
            }
            else
            {
                controls[p] = std::isnan(defaults[p]) ? 0.0f : defaults[p];
                lilv_instance_connect_port(instance, p, &controls[p]);
                if (lilv_port_is_a(host.plugin, port, controlClass))
                    controlIndex[lilv_node_as_string(lilv_port_get_symbol(host.plugin, port))] = p;
            }
        }
        for (auto* node : { audioClass, controlClass, atomClass, inputClass })
            lilv_node_free(node);
        lilv_instance_activate(instance);
    }

    ~Instance()
    {
        if (instance != nullptr)
        {
            lilv_instance_deactivate(instance);
            lilv_instance_free(instance);
        }
    }

    // One block, with MIDI events as (frame, status, data1, data2), knobs set
    // as a host sets them, by patch:Set messages, and the transport started.
    void run(const std::vector<std::array<int, 4>>& events = {}, const std::map<std::string, float>& knobs = {}, bool start = false)
    {
        auto& urids = host.urids;
        LV2_Atom_Forge forge;
        lv2_atom_forge_init(&forge, &urids.mapFeature);
        lv2_atom_forge_set_buffer(&forge, reinterpret_cast<uint8_t*>(midiIn.data()), midiIn.size() * sizeof(uint64_t));
        LV2_Atom_Forge_Frame sequence;
        lv2_atom_forge_sequence_head(&forge, &sequence, 0);
        for (const auto& [uri, value] : knobs)
        {
            LV2_Atom_Forge_Frame object;
            lv2_atom_forge_frame_time(&forge, 0);
            lv2_atom_forge_object(&forge, &object, 0, urids.map(LV2_PATCH__Set));
            lv2_atom_forge_key(&forge, urids.map(LV2_PATCH__property));
            lv2_atom_forge_urid(&forge, urids.map(uri.c_str()));
            lv2_atom_forge_key(&forge, urids.map(LV2_PATCH__value));
            lv2_atom_forge_float(&forge, value);
            lv2_atom_forge_pop(&forge, &object);
        }
        if (start)
        {
            LV2_Atom_Forge_Frame position;
            lv2_atom_forge_frame_time(&forge, 0);
            lv2_atom_forge_object(&forge, &position, 0, urids.map(LV2_TIME__Position));
            lv2_atom_forge_key(&forge, urids.map(LV2_TIME__speed));
            lv2_atom_forge_float(&forge, 1.0f);
            lv2_atom_forge_key(&forge, urids.map(LV2_TIME__beatsPerMinute));
            lv2_atom_forge_float(&forge, 120.0f);
            lv2_atom_forge_key(&forge, urids.map(LV2_TIME__beat));
            lv2_atom_forge_double(&forge, 0.0);
            lv2_atom_forge_pop(&forge, &position);
        }
        for (const auto& e : events)
        {
            const uint8_t bytes[3] = { (uint8_t) e[1], (uint8_t) e[2], (uint8_t) e[3] };
            lv2_atom_forge_frame_time(&forge, e[0]);
            lv2_atom_forge_atom(&forge, (e[1] & 0xf0) == 0xc0 ? 2 : 3, urids.map(LV2_MIDI__MidiEvent));
            lv2_atom_forge_write(&forge, bytes, (e[1] & 0xf0) == 0xc0 ? 2 : 3);
        }
        lv2_atom_forge_pop(&forge, &sequence);

        auto* out = reinterpret_cast<LV2_Atom*>(eventsOut.data());
        out->type = urids.map(LV2_ATOM__Chunk);
        out->size = (uint32_t) (eventsOut.size() * sizeof(uint64_t) - sizeof(LV2_Atom));
        lilv_instance_run(instance, blockSize);
    }

    LilvState* save()
    {
        return lilv_state_new_from_instance(host.plugin, instance, &host.urids.mapFeature, nullptr, nullptr, nullptr, nullptr,
                                            &Instance::portValue, this, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE, host.features.data());
    }

    void restore(const LilvState* state)
    {
        lilv_state_restore(state, instance, &Instance::setPortValue, this, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE, host.features.data());
    }

    Host& host;
    LilvInstance* instance = nullptr;
    std::vector<std::vector<float>> audio;
    std::vector<float> controls;
    std::vector<uint64_t> midiIn, eventsOut;
    std::map<std::string, uint32_t> controlIndex;

private:
    static const void* portValue(const char* symbol, void* user, uint32_t* size, uint32_t* type)
    {
        auto* self = static_cast<Instance*>(user);
        const auto found = self->controlIndex.find(symbol);
        if (found == self->controlIndex.end())
            return nullptr;
        *size = sizeof(float);
        *type = self->host.urids.map(LV2_ATOM__Float);
        return &self->controls[found->second];
    }

    static void setPortValue(const char* symbol, void* user, const void* value, uint32_t size, uint32_t type)
    {
        auto* self = static_cast<Instance*>(user);
        const auto found = self->controlIndex.find(symbol);
        if (found != self->controlIndex.end() && size == sizeof(float) && type == self->host.urids.map(LV2_ATOM__Float))
            std::memcpy(&self->controls[found->second], value, sizeof(float));
    }
};

std::string toString(Host& host, const LilvState* state)
{
    char* text = lilv_state_to_string(host.world, &host.urids.mapFeature, &host.urids.unmapFeature, state,
                                      "urn:quindrel:song", nullptr);
    std::string result = text != nullptr ? text : "";
    lilv_free(text);
    return result;
}

std::vector<std::vector<float>> play(Instance& instance)
{
    // Half a second of silence first, as a host runs an instance before the
    // song starts: the knobs glide to their places from a new instance's start.
    for (int block = 0; block < 50; ++block)
        instance.run();

    std::vector<std::vector<float>> result(instance.audio.size());
    for (int block = 0; block < 190; ++block)
    {
        instance.run({}, {}, block == 0); // the native sequencer starts with the transport
        for (size_t c = 0; c < instance.audio.size(); ++c)
            result[c].insert(result[c].end(), instance.audio[c].begin(), instance.audio[c].end());
    }
    return result;
}
} // namespace

TEST(PluginLv2State, TheStateExtensionKeepsTheSongAndAFreshInstancePlaysIt)
{
    Host host;
    ASSERT_NE(host.plugin, nullptr) << "no plug-in " << QUINDREL_LV2_URI << " in " << QUINDREL_LV2_DIR;

    Instance original(host);
    ASSERT_NE(original.instance, nullptr) << "the plug-in refused to start";
    ASSERT_EQ(original.audio.size(), 24u);

    // Another kit, then knobs moved as a host moves them.
    const std::string parameter = QUINDREL_LV2_URI ":";
    original.run({ { 0, 0xc0, 7, 0 } });
    original.run({}, { { parameter + "bass_drum_decay", 0.875f }, { parameter + "snare_drum_level", 0.25f }, { parameter + "main_volume", 0.375f } });

    // The song as the host saves it, and a fresh instance that opens it after
    // as many blocks, so that the noise sources of both stand at the same place.
    LilvState* saved = original.save();
    ASSERT_NE(saved, nullptr);
    Instance restored(host);
    restored.run();
    restored.run();
    restored.restore(saved);
    LilvState* again = restored.save();
    EXPECT_TRUE(lilv_state_equals(saved, again));
    EXPECT_EQ(toString(host, saved), toString(host, again));
    EXPECT_NE(toString(host, saved).find("StateString"), std::string::npos) << "the plug-in kept no state of its own";
    lilv_state_free(saved);
    lilv_state_free(again);

    const auto a = play(original), b = play(restored);
    float peak = 0.0f;
    for (const float x : a[0])
        peak = std::max(peak, std::abs(x));
    EXPECT_GT(peak, 0.01f) << "nothing played";
    for (size_t c = 0; c < a.size(); ++c)
        ASSERT_EQ(a[c], b[c]) << "channel " << c;
}
