#include "media/AudioOutput.h"

#include <mpv/client.h>

#include <QVarLengthArray>

#include <array>
#include <utility>

namespace corvane::media {

namespace {

/// Plays audio only, reads no other file and ignores the user's mpv configuration.
constexpr std::array<std::pair<const char *, const char *>, 20> kOptions{{
    {"config", "no"},
    {"load-scripts", "no"},
    {"terminal", "no"},
    {"input-default-bindings", "no"},
    {"osc", "no"},
    {"ytdl", "no"},
    {"access-references", "no"},
    {"audio-file-auto", "no"},
    {"sub-auto", "no"},
    {"idle", "yes"},
    {"pause", "yes"},
    {"keep-open", "yes"},
    {"vid", "no"},
    {"sid", "no"},
    {"audio-display", "no"},
    {"hr-seek", "yes"},
    {"ao", "pipewire,pulse,alsa"},
    {"audio-fallback-to-null", "yes"},
    {"audio-client-name", "Corvane"},
    {"audio-pitch-correction", "yes"},
}};

struct TerminateMpv {
    void operator()(mpv_handle *handle) const { mpv_terminate_destroy(handle); }
};
using MpvHandle = std::unique_ptr<mpv_handle, TerminateMpv>;

void callWake(void *wake) {
    (*static_cast<std::function<void()> *>(wake))();
}

class MpvAudioOutput : public AudioOutput {
  public:
    void setWake(std::function<void()> wake) override { m_wake = std::move(wake); }
    void setFile(const QString &path) override;
    void play(double seconds, double rate) override;
    void pause() override;
    State state() override;
    std::optional<double> position() override;

  private:
    bool open();
    void command(std::initializer_list<const char *> words);
    void set(const char *property, double value);
    void set(const char *property, bool value);
    void handle(const mpv_event &event);

    std::function<void()> m_wake; ///< called by the handle, so declared before it
    MpvHandle m_handle;
    QByteArray m_path;
    bool m_isLoaded = false;
    int m_pendingReplies = 0; ///< of asynchronous commands
    State m_state = State::silent;
};

/// Creates mpv at the first playback, since most clips are viewed without being played. False if
/// mpv can't be created.
bool MpvAudioOutput::open() {
    if (m_handle) {
        return true;
    }
    MpvHandle handle(mpv_create());
    if (!handle) {
        return false;
    }
    for (const auto &[name, value] : kOptions) {
        mpv_set_option_string(handle.get(), name, value);
    }
    if (mpv_initialize(handle.get()) < 0) {
        return false;
    }
    m_handle = std::move(handle);
    if (m_wake) {
        mpv_set_wakeup_callback(m_handle.get(), callWake, &m_wake);
    }
    return true;
}

void MpvAudioOutput::command(std::initializer_list<const char *> words) {
    QVarLengthArray<const char *, 8> arguments(words);
    arguments.append(nullptr);
    if (mpv_command_async(m_handle.get(), 1, arguments.data()) >= 0) {
        ++m_pendingReplies;
    }
}

void MpvAudioOutput::set(const char *property, double value) {
    mpv_set_property_async(m_handle.get(), 0, property, MPV_FORMAT_DOUBLE, &value);
}

void MpvAudioOutput::set(const char *property, bool value) {
    int flag = value;
    mpv_set_property_async(m_handle.get(), 0, property, MPV_FORMAT_FLAG, &flag);
}

void MpvAudioOutput::setFile(const QString &path) {
    m_path = path.toUtf8();
    m_isLoaded = false;
    m_state = State::silent;
    if (m_handle) {
        command({"stop"});
    }
}

void MpvAudioOutput::play(double seconds, double rate) {
    if (m_path.isEmpty() || !open()) {
        return;
    }
    const auto time = QByteArray::number(seconds, 'f', 6);
    set("speed", rate);
    if (m_isLoaded) {
        command({"seek", time.constData(), "absolute+exact"});
    } else {
        mpv_set_property_string(m_handle.get(), "start", time.constData());
        command({"loadfile", m_path.constData(), "replace"});
        m_isLoaded = true;
    }
    set("pause", false);
    m_state = State::starting;
}

void MpvAudioOutput::pause() {
    if (m_handle) {
        set("pause", true);
    }
    m_state = State::silent;
}

void MpvAudioOutput::handle(const mpv_event &event) {
    switch (event.event_id) {
    case MPV_EVENT_COMMAND_REPLY:
        --m_pendingReplies;
        break;
    case MPV_EVENT_PLAYBACK_RESTART:
        if (m_state == State::starting && m_pendingReplies == 0) {
            m_state = State::running;
        }
        break;
    case MPV_EVENT_END_FILE: {
        const auto *end = static_cast<const mpv_event_end_file *>(event.data);
        if (end->reason == MPV_END_FILE_REASON_ERROR && m_pendingReplies == 0) {
            m_path.clear(); // no playable audio: don't try again
            m_state = State::silent;
        }
        break;
    }
    default:
        break;
    }
}

AudioOutput::State MpvAudioOutput::state() {
    while (m_handle) {
        const auto *event = mpv_wait_event(m_handle.get(), 0);
        if (event->event_id == MPV_EVENT_NONE) {
            break;
        }
        handle(*event);
    }
    return m_state;
}

std::optional<double> MpvAudioOutput::position() {
    if (state() != State::running) {
        return std::nullopt;
    }
    int isAtEnd = 0;
    double seconds = 0;
    mpv_get_property(m_handle.get(), "eof-reached", MPV_FORMAT_FLAG, &isAtEnd);
    if (isAtEnd || mpv_get_property(m_handle.get(), "audio-pts", MPV_FORMAT_DOUBLE, &seconds) < 0) {
        return std::nullopt;
    }
    return seconds;
}

} // namespace

AudioOutput::~AudioOutput() = default;

std::unique_ptr<AudioOutput> makeAudioOutput() {
    return std::make_unique<MpvAudioOutput>();
}

} // namespace corvane::media
