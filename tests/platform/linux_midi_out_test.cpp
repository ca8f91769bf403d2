#include "platform/linux/linux_midi_out.h"

#include "audio/audio_engine.h"
#include "platform/linux/audio_stream.h"
#include "platform/linux/midi_in_port.h"

#include <RtMidi.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <jack/jack.h>
#include <map>

namespace {

/// The MIDI ports of the machine, which stand here for those of ALSA and of a JACK server.
struct Machine {
    std::map<RtMidi::Api, std::vector<std::string>> ports;
    std::map<RtMidi::Api, std::vector<std::string>> sources;
    bool hasJack = false;
    bool fails = false;                 ///< to open a port and to send
    std::vector<std::string> received;  ///< "port: bytes in hexadecimal", in their order
    std::vector<std::pair<JackShutdownCallback, void*>> watches;
    std::function<void(bool comes)> portChanged;

    void loseJack() {
        hasJack = false;
        for (const auto& [gone, context] : watches)
            gone(context);
    }
};

/// Lives to the end of the process, as what is never closed does.
Machine& machine = *new Machine;
auto& neverClosed = *new std::vector<RtMidiOut*>;

/// What an output and an input do alike; the ports are those of the machine.
template <typename Base, auto kPorts>
struct Fabricated : Base {
    template <typename... Arguments>
    explicit Fabricated(RtMidi::Api api, Arguments... arguments) : Base(arguments...), api_(api) {}

    std::vector<std::string>& ports() { return (machine.*kPorts)[api_]; }
    RtMidi::Api getCurrentApi() override { return api_; }
    unsigned int getPortCount() override { return static_cast<unsigned int>(ports().size()); }
    std::string getPortName(unsigned int number) override { return ports().at(number); }
    void openVirtualPort(const std::string&) override {}
    void closePort() override {}
    void setClientName(const std::string&) override {}
    void setPortName(const std::string&) override {}
    void initialize(const std::string&) override {}

private:
    RtMidi::Api api_;
};

struct FabricatedOutput : Fabricated<MidiOutApi, &Machine::ports> {
    using Fabricated::Fabricated;

    void openPort(unsigned int number, const std::string& /*clientPort*/) override {
        if (machine.fails)
            return error(RtMidiError::DRIVER_ERROR, "refused");
        name_ = ports().at(number);
        connected_ = true;
    }
    void sendMessage(const unsigned char* bytes, std::size_t count) override {
        if (machine.fails)
            return error(RtMidiError::DRIVER_ERROR, "lost");
        const QByteArray sent(reinterpret_cast<const char*>(bytes), static_cast<int>(count));
        machine.received.push_back(name_ + ": " + sent.toHex(' ').toStdString());
    }

private:
    std::string name_;
};

struct FabricatedInput : Fabricated<MidiInApi, &Machine::sources> {
    explicit FabricatedInput(RtMidi::Api api) : Fabricated(api, 1U) {}

    /// Hands the bytes over as they come from the system.
    static void send(std::vector<unsigned char> bytes) {
        const RtMidiInData& data = lastOpened->inputData_;
        data.userCallback(0, &bytes, data.userData);
    }
    void openPort(unsigned int, const std::string&) override {
        lastOpened = this;
        connected_ = !machine.fails;
    }

private:
    static inline FabricatedInput* lastOpened = nullptr;
};

}  // namespace

// They take the place of the libraries' own.
RtMidiOut::RtMidiOut(Api api, const std::string& /*client*/) {
    rtapi_ = new FabricatedOutput(api);
    neverClosed.push_back(this);
}

RtMidiIn::RtMidiIn(Api api, const std::string& /*client*/, unsigned int) {
    rtapi_ = new FabricatedInput(api);
}

const char** jack_get_ports(jack_client_t*, const char*, const char*, unsigned long) {
    const auto& names = machine.sources[RtMidi::UNIX_JACK];
    auto** list = static_cast<const char**>(std::calloc(names.size() + 1, sizeof(char*)));
    for (std::size_t i = 0; i < names.size(); ++i)
        list[i] = names[i].c_str();
    return list;
}

jack_client_t* jack_client_open(const char* /*name*/, jack_options_t, jack_status_t*, ...) {
    return machine.hasJack ? reinterpret_cast<jack_client_t*>(&machine) : nullptr;
}

void jack_on_shutdown(jack_client_t*, JackShutdownCallback gone, void* context) {
    machine.watches.emplace_back(gone, context);
}

/// Every port of JACK has the same identity, whatever came before.
jack_port_t* jack_port_by_name(jack_client_t*, const char* name) {
    const auto& names = machine.sources[RtMidi::UNIX_JACK];
    const bool isThere = std::find(names.begin(), names.end(), name) != names.end();
    return isThere ? reinterpret_cast<jack_port_t*>(&machine) : nullptr;
}

jack_port_t* jack_port_by_id(jack_client_t*, jack_port_id_t /*id*/) {
    return reinterpret_cast<jack_port_t*>(&machine);
}

jack_uuid_t jack_port_uuid(const jack_port_t* /*port*/) {
    return 7;
}

int jack_port_get_aliases(const jack_port_t*, char* const[2]) {
    return 0;
}

int jack_set_port_registration_callback(jack_client_t*, JackPortRegistrationCallback tell,
                                        void* context) {
    machine.portChanged = [tell, context](bool comes) { tell(0, comes ? 1 : 0, context); };
    return 0;
}

int jack_activate(jack_client_t*) {
    return 0;
}

namespace {

using testing::ElementsAre;

constexpr std::uint32_t kNoteOn = 0x643C90;
constexpr std::uint32_t kNoteOff = 0x003C90;

/// The outputs of a machine whose audio does not open.
struct LinuxMidiOutTest : testing::Test {
    LinuxMidiOutTest() {
        machine.ports = {{RtMidi::LINUX_ALSA, {"Tastiera 20:0", "", "Modulo 24:0"}},
                         {RtMidi::UNIX_JACK, {"jack:in"}}};
        machine.hasJack = true;
        qputenv("PIPEWIRE_REMOTE", "of this machine");  // so that JACK is asked for
    }
    ~LinuxMidiOutTest() override {
        machine.loseJack();
        machine = Machine();
    }

    MidiHandle opened(int device) {
        const MidiOpenResult result = out.open(device);
        EXPECT_EQ(result.code, 0) << device;
        return result.handle;
    }

    void expectRefused(MidiOpenResult result, SoundCode code, const char* text) {
        EXPECT_EQ(result.code, toInt(code));
        EXPECT_EQ(result.handle, 0U);
        EXPECT_TRUE(out.errorText(result.code).contains(QString::fromUtf8(text)));
    }

    std::vector<std::string> received() { return std::exchange(machine.received, {}); }

    std::shared_ptr<AudioEngine> engine = std::make_shared<AudioEngine>(44100);
    AudioStream stream{engine, {"", {"no such driver"}}};
    LinuxMidiOut out{*engine, stream};
};

}  // namespace

TEST_F(LinuxMidiOutTest, WhatIsThereHasANumberAndANameAndTheRestIsRefused) {
    EXPECT_EQ(out.deviceName(1), "Modulo 24:0") << "before anybody asked for their number";
    EXPECT_EQ(out.deviceName(kMidiMapper), "Sintetizzatore interno");
    EXPECT_EQ(out.deviceName(0), "Tastiera 20:0");
    EXPECT_EQ(out.deviceName(2), "jack:in");
    expectRefused(out.open(3), SoundCode::UnknownDevice, "MIDI non esiste");
    expectRefused(out.open(-2), SoundCode::UnknownDevice, "MIDI non esiste");
    expectRefused(out.open(kMidiMapper), SoundCode::NoAudioDevice, "Nessuna uscita audio");
    EXPECT_EQ(out.send(0, kNoteOn), 0);
    for (const int code : {out.send(1, kNoteOn), out.reset(1), out.close(1), out.reopen(1).code})
        EXPECT_EQ(code, toInt(SoundCode::InvalidHandle));
    EXPECT_EQ(out.deviceCount(), 3);
    machine.loseJack();
    EXPECT_EQ(out.deviceCount(), 2);
}

TEST_F(LinuxMidiOutTest, EachPortIsSentItsOwnMessagesAndNoNoteIsLeftOn) {
    const MidiHandle second = opened(1);
    const MidiHandle third = opened(2);
    for (const std::uint32_t message : {0x10C1U, kNoteOn, 0x40D2U, 0x647F95U, kNoteOff})
        EXPECT_EQ(out.send(second, message), 0);
    EXPECT_EQ(out.send(third, kNoteOn), 0);
    EXPECT_EQ(out.close(second), 0);
    EXPECT_THAT(received(),
                ElementsAre("Modulo 24:0: c1 10", "Modulo 24:0: 90 3c 64", "Modulo 24:0: d2 40",
                            "Modulo 24:0: 95 7f 64", "Modulo 24:0: 90 3c 00", "jack:in: 90 3c 64",
                            "Modulo 24:0: 95 7f 00"));
    EXPECT_EQ(out.reset(third) + out.close(third), 0);
    const std::vector<std::string> silence = received();
    ASSERT_EQ(silence.size(), 16U) << "the reset ended the note";
    EXPECT_EQ(silence[8], "jack:in: b8 78 00");
    EXPECT_EQ(silence[9], "jack:in: b9 7b 00");
}

TEST_F(LinuxMidiOutTest, APortThatGoesIsMissedAndFoundAgainByItsName) {
    EXPECT_EQ(out.deviceCount(), 3);
    auto& ports = machine.ports[RtMidi::LINUX_ALSA];
    ports = {"Nuova 16:0", "Modulo 24:0"};
    const MidiHandle handle = opened(1);
    expectRefused(out.open(0), SoundCode::DeviceVanished, "\"Tastiera 20:0\" non è più collegato");
    machine.fails = true;
    expectRefused(out.open(1), SoundCode::DeviceBusy, "\"Modulo 24:0\" è occupato");
    machine.fails = false;
    EXPECT_FALSE(out.gone(handle));
    ports = {"Nuova 16:0"};
    EXPECT_EQ(out.send(handle, kNoteOn), toInt(SoundCode::DeviceVanished));
    EXPECT_TRUE(out.gone(handle));
    expectRefused(out.reopen(handle), SoundCode::DeviceVanished, "\"Modulo 24:0\" non è più");
    ports = {"Modulo 24:0"};
    const MidiOpenResult again = out.reopen(handle);
    EXPECT_EQ(out.send(again.handle, kNoteOn), 0);
    EXPECT_THAT(received(), ElementsAre("Modulo 24:0: 90 3c 64"));
    machine.fails = true;
    EXPECT_EQ(out.reset(again.handle), toInt(SoundCode::DeviceVanished));
    EXPECT_TRUE(out.gone(again.handle));
    machine.fails = false;

    const MidiHandle jack = opened(2);
    machine.loseJack();
    EXPECT_EQ(out.send(jack, kNoteOff), toInt(SoundCode::DeviceVanished));
    expectRefused(out.reopen(jack), SoundCode::DeviceVanished, "\"jack:in\"");
    machine.hasJack = true;
    EXPECT_EQ(out.send(out.reopen(jack).handle, kNoteOff), 0);
    EXPECT_THAT(received(), ElementsAre("jack:in: 90 3c 00"));
}

TEST_F(LinuxMidiOutTest, KeyboardsAreHeardOnceAndNothingThatTheProgramSends) {
    machine.sources = {
        {RtMidi::LINUX_ALSA,
         {"Midi Through:Midi Through Port-0 14:0", "Keys 49:Keys 49 MIDI 1 20:0",
          "Cantavista:Cantavista 129:0", "aria:out 130:0"}},
        {RtMidi::UNIX_JACK,
         {"a2j:Midi-Through [14] (capture)", "Midi-Bridge:Keys 49 MIDI 1 (capture)",
          "a2j:Cantavista [129] (capture): Cantavista", "a2j:aria [130] (capture): out",
          "Midi-Bridge:Cantavista:(capture_0) Cantavista", "Cantavista-01:Cantavista",
          "sender:keys_out"}}};
    const std::vector<PortAddress> inputs = listMidiInputs();
    ASSERT_EQ(inputs.size(), 3U);
    EXPECT_EQ(displayName(inputs[0]), "Keys 49 MIDI 1");
    EXPECT_EQ(displayName(inputs[1]), "aria: out");
    EXPECT_EQ(displayName(inputs[2]), "sender:keys_out");
    for (const PortAddress& input : inputs) {
        std::vector<std::uint32_t> heard;
        auto port =
            MidiInPort::open(input, [&](std::uint32_t message) { heard.push_back(message); });
        for (const auto& bytes : std::vector<std::vector<unsigned char>>{
                 {0x90, 60}, {}, {64, 0xF8, 61, 1}, {0xF0, 1, 2}, {3, 0xF7, 4}, {0xC1, 5}})
            FabricatedInput::send(bytes);
        EXPECT_THAT(heard, ElementsAre(0x403C90U, 0x013D90U, 0x05C1U));
    }
    // A port that is parted from its source goes on; one whose source was replaced does not.
    auto port = MidiInPort::open(inputs[2], {});
    machine.portChanged(true);
    EXPECT_TRUE(port->isAlive({}));
    machine.portChanged(false);
    EXPECT_FALSE(port->isAlive({}));
    port = MidiInPort::open(inputs[2], {});
    EXPECT_TRUE(port->isAlive({}));
    machine.sources[RtMidi::UNIX_JACK].clear();
    EXPECT_FALSE(port->isAlive({}));
    port.reset();
    machine.fails = true;
    EXPECT_FALSE(MidiInPort::open(inputs[0], {}));
    EXPECT_FALSE(MidiInPort::open({RtMidi::LINUX_ALSA, "gone"}, {}));
}
