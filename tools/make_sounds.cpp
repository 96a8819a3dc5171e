// Makes the five sounds of Orvane Utilities as wave files, from nothing but the tables below.
//
//     make_sounds OUTPUT_FOLDER
//
// All five share one key, D: the theme climbs out of D dorian into D major, its answer and the farewell end
// on the same chord, and the chant is that chord sung. So whichever sound cuts off whichever other, nothing
// clashes. The same program gives the same bytes on every run.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <numbers>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Samples = std::vector<double>;

constexpr double kSampleRate = 22050.0;
constexpr double kTwoPi = 2.0 * std::numbers::pi;

std::size_t FrameCount(double seconds) {
    return static_cast<std::size_t>(std::lround(seconds * kSampleRate));
}

double Seconds(std::size_t frames) { return static_cast<double>(frames) / kSampleRate; }

double FromDecibels(double decibels) { return std::pow(10.0, decibels / 20.0); }

double CentsToRatio(double cents) { return std::exp2(cents / 1200.0); }

// The standard distributions may differ between libraries, so the numbers are made here.
class Noise {
 public:
    explicit Noise(std::uint32_t seed) : state_(seed) {}

    // Uniform in -1 to 1.
    double Next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return static_cast<double>(state_) / 2147483647.5 - 1.0;
    }

 private:
    std::uint32_t state_;
};

// ---- Pitches, scores -----------------------------------------------------------------------------------

// A note name such as "F#4" or "Bb3". A name that is none does not compile.
struct Pitch {
    consteval Pitch(const char* name) : key(0) {
        constexpr std::array<int, 7> kSteps = {9, 11, 0, 2, 4, 5, 7};  // A to G, above C
        if (*name < 'A' || *name > 'G') throw std::invalid_argument("note letter");
        key = kSteps[static_cast<std::size_t>(*name++ - 'A')];
        if (*name == '#') ++key, ++name;
        if (*name == 'b') --key, ++name;
        if (*name < '0' || *name > '9') throw std::invalid_argument("octave");
        key += 12 * (*name - '0' + 1);
    }

    double Hertz() const { return 440.0 * std::exp2((key - 69) / 12.0); }

    int key;  // semitones, A4 being 69
};

struct Note {
    double start;   // in beats
    double length;  // in beats
    Pitch pitch;
    double force;  // 0 to 1; more is louder and brighter
};

// ---- Envelopes -----------------------------------------------------------------------------------------

// Goes from 0 to 1 with no corner at either end; a corner is what the ear hears as a tick.
double SmoothStep(double x) {
    const double clamped = std::clamp(x, 0.0, 1.0);
    return 0.5 - 0.5 * std::cos(std::numbers::pi * clamped);
}

struct Envelope {
    double attack;   // seconds
    double sag;      // the level that a held note sinks to
    double sagTime;  // seconds
    double release;  // seconds, counted from the end of the note

    // A product of three smooth curves, so a note that ends within its own attack still has no jump.
    double At(double time, double length) const {
        const double held = sag + (1.0 - sag) * std::exp(-time / sagTime);
        return SmoothStep(time / attack) * held * (1.0 - SmoothStep((time - length) / release));
    }
};

// ---- Filters -------------------------------------------------------------------------------------------

// A second-order section. The makers follow the usual bilinear designs.
class Biquad {
 public:
    static Biquad LowPass(double hertz, double q) {
        const auto [cosine, alpha] = Angle(hertz, q);
        const double side = (1.0 - cosine) / 2.0;
        return Biquad(side, 2.0 * side, side, 1.0 + alpha, -2.0 * cosine, 1.0 - alpha);
    }

    static Biquad HighPass(double hertz, double q) {
        const auto [cosine, alpha] = Angle(hertz, q);
        const double side = (1.0 + cosine) / 2.0;
        return Biquad(side, -2.0 * side, side, 1.0 + alpha, -2.0 * cosine, 1.0 - alpha);
    }

    static Biquad HighShelf(double hertz, double q, double decibels) {
        const double tangent = std::tan(std::numbers::pi * hertz / kSampleRate);
        const double square = tangent * tangent;
        const double high = FromDecibels(decibels);
        const double band = std::pow(high, 0.4996667741545416);
        return Biquad(high + band * tangent / q + square, 2.0 * (square - high),
                      high - band * tangent / q + square, 1.0 + tangent / q + square, 2.0 * (square - 1.0),
                      1.0 - tangent / q + square);
    }

    double Run(double in) {
        const double out = b0_ * in + z1_;
        z1_ = b1_ * in - a1_ * out + z2_;
        z2_ = b2_ * in - a2_ * out;
        return out;
    }

    void Run(Samples& samples) {
        for (double& sample : samples) sample = Run(sample);
    }

 private:
    struct CosineAlpha {
        double cosine;
        double alpha;
    };

    static CosineAlpha Angle(double hertz, double q) {
        const double omega = kTwoPi * hertz / kSampleRate;
        return {std::cos(omega), std::sin(omega) / (2.0 * q)};
    }

    Biquad(double b0, double b1, double b2, double a0, double a1, double a2)
        : b0_(b0 / a0), b1_(b1 / a0), b2_(b2 / a0), a1_(a1 / a0), a2_(a2 / a0) {}

    double b0_, b1_, b2_, a1_, a2_;
    double z1_ = 0.0;
    double z2_ = 0.0;
};

// One resonance of a throat: passes low frequencies unchanged and lifts its own. It can be retuned while it
// runs, because it keeps past output only, not sums that belong to the old tuning.
class Formant {
 public:
    void Tune(double hertz, double bandwidth) {
        const double radius = std::exp(-std::numbers::pi * bandwidth / kSampleRate);
        far_ = -radius * radius;
        near_ = 2.0 * radius * std::cos(kTwoPi * hertz / kSampleRate);
        in_ = 1.0 - near_ - far_;
    }

    double Run(double in) {
        const double out = in_ * in + near_ * past1_ + far_ * past2_;
        past2_ = past1_;
        past1_ = out;
        return out;
    }

 private:
    double in_ = 1.0, near_ = 0.0, far_ = 0.0;
    double past1_ = 0.0, past2_ = 0.0;
};

// ---- Oscillators ---------------------------------------------------------------------------------------

// In hertz. Nothing is made above it, so nothing can fold back from half the sample rate.
constexpr double kTopHarmonic = 5200.0;

// A tone as a sum of its harmonics. `levels[k]` belongs to harmonic k + 1, and each further harmonic is
// scaled once more by `brightness`, so one number opens and closes the tone while it sounds.
double HarmonicSum(double phase, std::span<const double> levels, double brightness) {
    const double twiceCosine = 2.0 * std::cos(phase);
    double before = 0.0;
    double sine = std::sin(phase);
    double scale = 1.0;
    double sum = 0.0;
    for (const double level : levels) {
        sum += level * scale * sine;
        const double next = twiceCosine * sine - before;
        before = sine;
        sine = next;
        scale *= brightness;
    }
    return sum;
}

struct Bump {
    double hertz;
    double octaves;  // half width
    double decibels;
};

// Levels of the harmonics of a tone, to the sum of squares 1: a slope, the instrument's body on top of it,
// and a taper where the highest would otherwise break off.
std::vector<double> HarmonicLevels(double hertz, double decibelsPerOctave, Bump body) {
    std::vector<double> levels;
    double power = 0.0;
    for (double k = 1.0; k * hertz < kTopHarmonic; k += 1.0) {
        const double distance = std::log2(k * hertz / body.hertz) / body.octaves;
        const double taper = 1.0 - SmoothStep((k * hertz / kTopHarmonic - 0.6) / 0.4);
        levels.push_back(taper * FromDecibels(decibelsPerOctave * std::log2(k) +
                                              body.decibels * std::exp(-distance * distance)));
        power += levels.back() * levels.back();
    }
    for (double& level : levels) level /= std::sqrt(power);
    return levels;
}

// The unsteadiness that tells several players from one loud one: a slow swing of the phase, about a
// radian either way. Swinging the phase rather than detuning each player keeps the section's pitch true and
// its lowest harmonics together as long as the note lasts. Fixed detuning would let them cancel and return.
class Wander {
 public:
    explicit Wander(Noise& noise)
        : slowRate_(0.5 + 0.2 * noise.Next()),
          fastRate_(1.5 + 0.5 * noise.Next()),
          slowTurn_(std::numbers::pi * noise.Next()),
          fastTurn_(std::numbers::pi * noise.Next()) {}

    double At(double time) const {
        return 0.9 * std::sin(kTwoPi * slowRate_ * time + slowTurn_) +
               0.3 * std::sin(kTwoPi * fastRate_ * time + fastTurn_);
    }

 private:
    double slowRate_, fastRate_, slowTurn_, fastTurn_;
};

// ---- Horns, strings ------------------------------------------------------------------------------------

// A small section of like instruments. What makes it a section and not an organ pipe: the players are a
// few cents and milliseconds apart, find the pitch from below, and get brighter as they get louder.
struct Section {
    int players;
    double gain;
    double slope;  // decibels per octave of the harmonics at full force
    Bump body;
    double softness;  // how far a soft tone darkens, 0 to 1
    double wander;    // radians
    double scoop;     // cents below the pitch at the very start
    double vibrato;   // cents
    double spread;    // seconds, the latest player
    double gap;       // seconds by which a note ends early, so that a repeated one is heard again
    Envelope envelope;
};

constexpr Section kLeadHorns = {
    .players = 4,
    .gain = 0.44,
    .slope = -3.0,
    .body = {820.0, 1.2, 6.0},
    .softness = 0.36,
    .wander = 0.8,
    .scoop = 22.0,
    .vibrato = 5.0,
    .spread = 0.012,
    .gap = 0.075,
    .envelope = {.attack = 0.040, .sag = 0.72, .sagTime = 0.50, .release = 0.09},
};
constexpr Section kHorns = {
    .players = 3,
    .gain = 0.21,
    .slope = -4.5,
    .body = {430.0, 1.1, 4.0},
    .softness = 0.42,
    .wander = 0.8,
    .scoop = 18.0,
    .vibrato = 4.0,
    .spread = 0.016,
    .gap = 0.070,
    .envelope = {.attack = 0.045, .sag = 0.75, .sagTime = 0.60, .release = 0.10},
};
constexpr Section kCelli = {
    .players = 6,
    .gain = 0.19,
    .slope = -4.5,
    .body = {300.0, 1.2, 4.0},
    .softness = 0.35,
    .wander = 0.7,
    .scoop = 4.0,
    .vibrato = 7.0,
    .spread = 0.018,
    .gap = 0.050,
    .envelope = {.attack = 0.055, .sag = 0.70, .sagTime = 0.35, .release = 0.12},
};
constexpr Section kBasses = {
    .players = 4,
    .gain = 0.115,
    .slope = -5.0,
    .body = {160.0, 1.0, 4.0},
    .softness = 0.30,
    .wander = 0.5,
    .scoop = 3.0,
    .vibrato = 4.0,
    .spread = 0.018,
    .gap = 0.045,
    .envelope = {.attack = 0.080, .sag = 0.80, .sagTime = 0.70, .release = 0.16},
};

void PlayTone(Samples& mix, const Section& section, const Note& note, double beat, Noise& noise) {
    const double hertz = note.pitch.Hertz();
    const std::vector<double> levels = HarmonicLevels(hertz, section.slope, section.body);
    const double length = note.length * beat - section.gap;
    const double gain = section.gain * note.force / section.players;
    const double turnAtStart = std::numbers::pi * noise.Next();

    for (int player = 0; player < section.players; ++player) {
        const Wander wander(noise);
        const double late = 0.5 * (1.0 + noise.Next()) * section.spread;
        const double rate = 5.0 + 0.4 * noise.Next();
        const double turn = std::numbers::pi * noise.Next();
        // Whoever is late joins the swing of the others instead of starting one of his own.
        double phase = turnAtStart + kTwoPi * hertz * late;

        const std::size_t first = FrameCount(note.start * beat + late);
        const std::size_t frames = FrameCount(length + section.envelope.release);
        for (std::size_t i = 0; i < frames && first + i < mix.size(); ++i) {
            const double time = Seconds(i);
            const double level = section.envelope.At(time, length);
            const double settled = SmoothStep((time - 0.15) / 0.35);
            const double cents = section.vibrato * settled * std::sin(kTwoPi * rate * time + turn) -
                                 section.scoop * std::exp(-time / 0.030);
            const double brightness = 1.0 - section.softness * (1.0 - level * note.force);
            mix[first + i] +=
                gain * level * HarmonicSum(phase + section.wander * wander.At(time), levels, brightness);
            phase = std::fmod(phase + kTwoPi * hertz * CentsToRatio(cents) / kSampleRate, kTwoPi);
        }
    }
}

// ---- Drums, wood and bone ------------------------------------------------------------------------------

// A thing that is struck: ways to swing, each a ratio to the note, a level and a time to fall to a third.
struct Mode {
    double ratio;
    double level;
    double decay;  // seconds
};

// The tuned modes of a kettle stand close to 2 : 3 : 4 : 5, which is why a drum can have a pitch at all.
constexpr std::array<Mode, 6> kKettle = {{{1.000, 1.00, 0.42},
                                          {1.498, 0.55, 0.36},
                                          {1.985, 0.32, 0.26},
                                          {2.440, 0.16, 0.18},
                                          {2.930, 0.09, 0.12},
                                          {0.620, 0.30, 0.06}}};

// A short bar of bone on wood. Its strongest mode is the D that the other sounds stand on, high up.
constexpr std::array<Mode, 5> kBone = {{{1.00, 1.00, 0.0085},
                                        {0.53, 0.55, 0.0110},
                                        {1.71, 0.62, 0.0055},
                                        {2.46, 0.30, 0.0036},
                                        {3.31, 0.12, 0.0024}}};

struct Strike {
    std::span<const Mode> modes;
    double attack;      // seconds; a felt stick is slow, a knuckle is not
    double drop;        // cents by which a hard stroke starts sharp, as the skin is stretched
    double thumpHertz;  // edge of the noise of the contact
    double thump;       // its level
    double thumpDecay;  // seconds
};

constexpr Strike kFeltStick = {kKettle, 0.007, 25.0, 240.0, 0.9, 0.030};
constexpr Strike kKnuckle = {kBone, 0.0012, 0.0, 2600.0, 0.45, 0.0022};

void PlayStrike(Samples& mix, const Strike& strike, double hertz, double start, double gain, Noise& noise) {
    Biquad edge = Biquad::LowPass(strike.thumpHertz, 0.7);
    std::vector<double> phases(strike.modes.size(), 0.0);
    for (std::size_t i = FrameCount(start); i < mix.size(); ++i) {
        const double time = Seconds(i) - start;
        const double sharp = CentsToRatio(strike.drop * std::exp(-time / 0.060));
        double sum = edge.Run(noise.Next()) * strike.thump * std::exp(-time / strike.thumpDecay);
        for (std::size_t m = 0; m < strike.modes.size(); ++m) {
            const Mode& mode = strike.modes[m];
            sum += mode.level * std::exp(-time / mode.decay) * std::sin(phases[m]);
            phases[m] += kTwoPi * hertz * mode.ratio * sharp / kSampleRate;
        }
        mix[i] += gain * SmoothStep(time / strike.attack) * sum;
    }
}

// ---- Voices --------------------------------------------------------------------------------------------

struct Resonance {
    double hertz;
    double bandwidth;
};

using Throat = std::array<Resonance, 5>;

// The vowel "ah". A shorter throat, as of the higher voices, has all its resonances a little higher.
constexpr Throat kLowThroat = {
    {{640.0, 130.0}, {1060.0, 140.0}, {2450.0, 140.0}, {2800.0, 170.0}, {3250.0, 220.0}}};
constexpr Throat kHighThroat = {
    {{740.0, 150.0}, {1140.0, 150.0}, {2750.0, 150.0}, {3300.0, 190.0}, {3900.0, 260.0}}};

struct SungNote {
    Pitch pitch;
    double cents;  // off the keyboard's pitch
    const Throat* throat;
    double entry;  // seconds
    double force;
};

constexpr int kSingersPerNote = 6;
constexpr Envelope kSungEnvelope = {0.17, 0.80, 0.50, 0.48};

void Sing(Samples& mix, const SungNote& note, double length, Noise& noise) {
    const double hertz = note.pitch.Hertz() * CentsToRatio(note.cents);
    const double turnAtStart = std::numbers::pi * noise.Next();
    for (int singer = 0; singer < kSingersPerNote; ++singer) {
        const Wander wander(noise);
        const double size = 1.0 + 0.04 * noise.Next();  // no two heads are alike
        const double rate = 5.1 + 0.5 * noise.Next();
        const double turn = std::numbers::pi * noise.Next();
        const double late = 0.012 * (1.0 + noise.Next());
        double phase = turnAtStart + kTwoPi * hertz * late;

        // Soft cords fall by about 15 decibels per octave, and the lips give back 6.
        const std::vector<double> cords = HarmonicLevels(hertz, -9.0, {200.0, 1.0, 0.0});
        std::array<Formant, 5> formants;

        const std::size_t first = FrameCount(note.entry + late);
        const std::size_t frames = FrameCount(length + kSungEnvelope.release);
        for (std::size_t i = 0; i < frames && first + i < mix.size(); ++i) {
            const double time = Seconds(i);
            // The mouth opens into the vowel. One that stood open from the start would sound switched on.
            const double opening = 0.72 + 0.28 * SmoothStep(time / 0.20);
            for (std::size_t f = 0; f < formants.size(); ++f) {
                const Resonance& resonance = (*note.throat)[f];
                formants[f].Tune(resonance.hertz * size * (f < 2 ? opening : 1.0), resonance.bandwidth);
            }
            const double cents =
                11.0 * SmoothStep((time - 0.10) / 0.40) * std::sin(kTwoPi * rate * time + turn) -
                20.0 * std::exp(-time / 0.050);
            double voice = HarmonicSum(phase + wander.At(time), cords, 1.0) + 0.012 * noise.Next();
            for (Formant& formant : formants) voice = formant.Run(voice);
            mix[first + i] += 0.1 * note.force * kSungEnvelope.At(time, length) * voice;
            phase = std::fmod(phase + kTwoPi * hertz * CentsToRatio(cents) / kSampleRate, kTwoPi);
        }
    }
}

// ---- Reverb --------------------------------------------------------------------------------------------

class DelayLine {
 public:
    explicit DelayLine(std::size_t frames) : frames_(frames, 0.0) {}

    double Oldest() const { return frames_[at_]; }

    void Push(double in) {
        frames_[at_] = in;
        at_ = (at_ + 1) % frames_.size();
    }

 private:
    Samples frames_;
    std::size_t at_ = 0;
};

struct Room {
    double fallTime;  // seconds until the tail is 60 decibels down
    double damping;   // share of the highs that a wall swallows, 0 to 1
    double wet;
};

constexpr Room kHall = {1.15, 0.45, 0.55};
constexpr Room kChapel = {1.00, 0.50, 0.60};

// Eight delay lines that feed each other through a reflection, which loses nothing, so the fall time is set
// by the lines alone. Prime lengths keep their echoes from falling together into a pitch.
void AddRoom(Samples& samples, const Room& room) {
    constexpr std::array<std::size_t, 8> kLines = {661, 809, 911, 967, 1163, 1361, 1487, 1601};
    constexpr std::array<std::size_t, 3> kDiffusers = {113, 241, 337};
    constexpr double kDiffusion = 0.6;

    std::vector<DelayLine> lines(kLines.begin(), kLines.end());
    std::vector<DelayLine> diffusers(kDiffusers.begin(), kDiffusers.end());
    DelayLine gap(FrameCount(0.012));  // the first wall is a few steps away
    std::array<double, kLines.size()> walls = {};
    std::array<double, kLines.size()> losses = {};
    for (std::size_t i = 0; i < kLines.size(); ++i) {
        losses[i] = std::pow(10.0, -3.0 * Seconds(kLines[i]) / room.fallTime);
    }

    for (double& sample : samples) {
        double in = gap.Oldest();
        gap.Push(sample);
        for (DelayLine& diffuser : diffusers) {
            const double old = diffuser.Oldest();
            const double fed = in + kDiffusion * old;
            diffuser.Push(fed);
            in = old - kDiffusion * fed;
        }

        double total = 0.0;
        double out = 0.0;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            walls[i] += (1.0 - room.damping) * (losses[i] * lines[i].Oldest() - walls[i]);
            total += walls[i];
            out += i % 2 == 0 ? walls[i] : -walls[i];
        }
        const double reflected = 2.0 * total / static_cast<double>(lines.size());
        for (std::size_t i = 0; i < lines.size(); ++i) lines[i].Push(in + walls[i] - reflected);
        sample += room.wet * out;
    }
}

// ---- Loudness, finish ----------------------------------------------------------------------------------

// Mean power of the loudness-weighted sound in overlapping blocks.
std::vector<double> BlockPowers(Samples samples, double blockSeconds) {
    // The two filters of the broadcast loudness measure: the head's own lift of the highs, and the ear's
    // deafness to the very low.
    Biquad::HighShelf(1681.974450955533, 0.7071752369554196, 3.999843853973347).Run(samples);
    Biquad::HighPass(38.13547087602444, 0.5003270373238773).Run(samples);

    const std::size_t block = FrameCount(blockSeconds);
    samples.resize(std::max(samples.size(), block), 0.0);
    std::vector<double> powers;
    for (std::size_t first = 0; first + block <= samples.size(); first += block / 4) {
        double power = 0.0;
        for (std::size_t i = first; i < first + block; ++i) power += samples[i] * samples[i];
        powers.push_back(power / static_cast<double>(block));
    }
    return powers;
}

double PowerToLoudness(double power) { return -0.691 + 10.0 * std::log10(power); }

// Loudness of the part that sounds: blocks far below the mean, that is the tail, do not count.
double ActiveLoudness(const Samples& samples) {
    constexpr double kGate = 0.1;  // 10 decibels
    const std::vector<double> powers = BlockPowers(samples, 0.4);
    double floor = 0.0;
    for (const double power : powers) floor += kGate * power / static_cast<double>(powers.size());
    double sum = 0.0;
    double count = 0.0;
    for (const double power : powers) {
        if (power < floor) continue;
        sum += power;
        count += 1.0;
    }
    return PowerToLoudness(sum / count);
}

// A knock is over before an average means anything; it is as loud as its loudest eighth of a second.
double KnockLoudness(const Samples& samples) {
    const std::vector<double> powers = BlockPowers(samples, 0.125);
    return PowerToLoudness(*std::max_element(powers.begin(), powers.end()));
}

constexpr double kLoudness = -20.0;       // of everything that lasts, in decibels as the broadcasters count
constexpr double kChantLoudness = -20.5;  // voices carry further than their measure, and each roll brings one
constexpr double kKnockLoudness = -26.0;  // a knock of the same measure would make one jump
constexpr double kCeiling = -3.0;         // decibels below full scale
constexpr double kFadeIn = 0.0008;        // seconds
constexpr double kSilence = 0.012;        // seconds at the end

// Takes away what no small speaker should get and brings both ends to zero.
void Polish(Samples& samples, double fadeOut) {
    Biquad::HighPass(40.0, 0.7071).Run(samples);
    // Two sections in the classic pairing make one smooth fourth-order edge.
    Biquad::LowPass(5200.0, 0.5412).Run(samples);
    Biquad::LowPass(5200.0, 1.3066).Run(samples);
    const double end = Seconds(samples.size()) - kSilence;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double time = Seconds(i);
        samples[i] *= SmoothStep(time / kFadeIn) * SmoothStep((end - time) / fadeOut);
    }
}

void SetLoudness(Samples& samples, double measured, double wanted) {
    const double gain = FromDecibels(wanted - measured);
    for (double& sample : samples) sample *= gain;
}

// ---- Wave writer ---------------------------------------------------------------------------------------

void AppendLittleEndian(std::string& bytes, std::uint32_t value, int count) {
    for (int i = 0; i < count; ++i) bytes.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
}

// 16 bit, mono. Rounding without dither: the tails end in a fade to true silence, which dither would fill.
std::string WaveBytes(const Samples& samples) {
    constexpr std::uint32_t kBytesPerSample = 2;
    constexpr auto kRate = static_cast<std::uint32_t>(kSampleRate);
    const auto dataSize = static_cast<std::uint32_t>(samples.size()) * kBytesPerSample;

    std::string bytes = "RIFF";
    AppendLittleEndian(bytes, 36 + dataSize, 4);
    bytes += "WAVEfmt ";
    AppendLittleEndian(bytes, 16, 4);  // size of the format block
    AppendLittleEndian(bytes, 1, 2);   // plain PCM
    AppendLittleEndian(bytes, 1, 2);   // channels
    AppendLittleEndian(bytes, kRate, 4);
    AppendLittleEndian(bytes, kRate * kBytesPerSample, 4);
    AppendLittleEndian(bytes, kBytesPerSample, 2);
    AppendLittleEndian(bytes, 8 * kBytesPerSample, 2);
    bytes += "data";
    AppendLittleEndian(bytes, dataSize, 4);
    for (const double sample : samples) {
        const auto value =
            static_cast<std::int16_t>(std::lround(sample * std::numeric_limits<std::int16_t>::max()));
        AppendLittleEndian(bytes, static_cast<std::uint16_t>(value), 2);
    }
    return bytes;
}

void WriteWave(const std::filesystem::path& path, const Samples& samples) {
    for (const double sample : samples) {
        if (std::abs(sample) > FromDecibels(kCeiling)) throw std::runtime_error(path.string() + ": too loud");
    }
    const std::string bytes = WaveBytes(samples);
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) throw std::runtime_error(path.string() + ": cannot be written");
}

// ---- Scores --------------------------------------------------------------------------------------------

struct Part {
    const Section* section;
    std::span<const Note> notes;
};

struct Score {
    double beat;     // seconds
    double length;   // seconds, with the tail
    double fadeOut;  // seconds
    std::span<const Part> parts;
    std::span<const Note> kettle;
};

constexpr double kMarch = 0.56;  // seconds per beat, 107 to the minute

// The theme. Dm, F, G, C over E, D: the motif, a dotted call on one note and a climb, meets a second dotted
// call a seventh higher that steps up to the tonic. Into the last chord the bass goes against the tune.
constexpr std::array kThemeTune = {
    Note{0.00, 0.75, "D4", 0.96}, Note{0.75, 0.25, "D4", 0.84}, Note{1.00, 0.50, "F4", 0.84},
    Note{1.50, 0.50, "G4", 0.80}, Note{2.00, 1.50, "A4", 0.90}, Note{3.50, 0.50, "G4", 0.76},
    Note{4.00, 1.00, "B4", 0.88}, Note{5.00, 0.75, "C5", 0.90}, Note{5.75, 0.25, "C5", 0.76},
    Note{6.00, 2.30, "D5", 0.96},
};
constexpr std::array kThemeAlto = {
    Note{0.00, 0.75, "A3", 0.92}, Note{0.75, 0.25, "A3", 0.80},  Note{1.00, 1.00, "D4", 0.70},
    Note{2.00, 2.00, "C4", 0.78}, Note{4.00, 1.00, "G4", 0.76},  Note{5.00, 0.75, "G4", 0.78},
    Note{5.75, 0.25, "G4", 0.66}, Note{6.00, 2.30, "F#4", 0.84},
};
constexpr std::array kThemeTenor = {
    Note{0.00, 0.75, "D3", 0.92}, Note{0.75, 0.25, "D3", 0.80}, Note{1.00, 1.00, "A3", 0.70},
    Note{2.00, 2.00, "A3", 0.78}, Note{4.00, 1.00, "D4", 0.76}, Note{5.00, 0.75, "C4", 0.78},
    Note{5.75, 0.25, "C4", 0.66}, Note{6.00, 2.30, "A3", 0.84},
};
constexpr std::array kThemeCelli = {
    Note{0.00, 0.50, "D3", 0.75}, Note{0.50, 0.50, "D3", 0.60}, Note{1.00, 0.50, "D3", 0.68},
    Note{1.50, 0.50, "D3", 0.60}, Note{2.00, 0.50, "F3", 0.78}, Note{2.50, 0.50, "F3", 0.62},
    Note{3.00, 0.50, "F3", 0.68}, Note{3.50, 0.50, "F3", 0.62}, Note{4.00, 0.50, "G3", 0.78},
    Note{4.50, 0.50, "G3", 0.66}, Note{5.00, 0.50, "E3", 0.80}, Note{5.50, 0.50, "E3", 0.72},
    Note{6.00, 2.30, "D3", 0.88},
};
constexpr std::array kThemeBasses = {
    Note{0.00, 2.00, "D2", 0.75}, Note{2.00, 2.00, "F2", 0.75}, Note{4.00, 1.00, "G2", 0.78},
    Note{5.00, 1.00, "E2", 0.80}, Note{6.00, 2.30, "D2", 0.88},
};
// Two drums, D and A. Strokes fall on a note of their chord; only the roll into the last chord, which swells,
// leans on the A against it.
constexpr std::array kThemeKettle = {
    Note{0.00, 0.0, "D2", 0.85}, Note{0.75, 0.0, "D2", 0.40}, Note{1.00, 0.0, "D2", 0.60},
    Note{2.00, 0.0, "A2", 0.75}, Note{3.50, 0.0, "A2", 0.45}, Note{4.00, 0.0, "D2", 0.70},
    Note{5.00, 0.0, "A2", 0.40}, Note{5.25, 0.0, "A2", 0.32}, Note{5.50, 0.0, "A2", 0.42},
    Note{5.75, 0.0, "A2", 0.55}, Note{6.00, 0.0, "D2", 1.00},
};
constexpr std::array kThemeParts = {Part{&kLeadHorns, kThemeTune}, Part{&kHorns, kThemeAlto},
                                    Part{&kHorns, kThemeTenor}, Part{&kCelli, kThemeCelli},
                                    Part{&kBasses, kThemeBasses}};
constexpr Score kTheme = {kMarch, 5.75, 0.70, kThemeParts, kThemeKettle};

// The answer: the same dotted call from the top, and the climb turned upside down. Dm, C over E, D.
constexpr std::array kAnswerTune = {
    Note{0.00, 0.75, "A4", 0.86}, Note{0.75, 0.25, "A4", 0.72},  Note{1.00, 0.50, "G4", 0.84},
    Note{1.50, 0.50, "E4", 0.80}, Note{2.00, 1.85, "F#4", 0.92},
};
constexpr std::array kAnswerAlto = {
    Note{0.00, 0.75, "F4", 0.74},
    Note{0.75, 0.25, "F4", 0.62},
    Note{1.00, 1.00, "C4", 0.76},
    Note{2.00, 1.85, "D4", 0.80},
};
constexpr std::array kAnswerTenor = {
    Note{0.00, 0.75, "D4", 0.74},
    Note{0.75, 0.25, "D4", 0.62},
    Note{1.00, 1.00, "G3", 0.76},
    Note{2.00, 1.85, "A3", 0.80},
};
constexpr std::array kAnswerCelli = {
    Note{0.00, 0.50, "D3", 0.78}, Note{0.50, 0.50, "D3", 0.64}, Note{1.00, 0.50, "E3", 0.78},
    Note{1.50, 0.50, "E3", 0.68}, Note{2.00, 1.85, "D3", 0.84},
};
constexpr std::array kAnswerBasses = {
    Note{0.00, 1.00, "D2", 0.76},
    Note{1.00, 1.00, "E2", 0.78},
    Note{2.00, 1.85, "D2", 0.84},
};
constexpr std::array kAnswerKettle = {
    Note{0.00, 0.0, "D2", 0.75},
    Note{1.50, 0.0, "A2", 0.40},
    Note{1.75, 0.0, "A2", 0.50},
    Note{2.00, 0.0, "D2", 0.85},
};
constexpr std::array kAnswerParts = {Part{&kLeadHorns, kAnswerTune}, Part{&kHorns, kAnswerAlto},
                                     Part{&kHorns, kAnswerTenor}, Part{&kCelli, kAnswerCelli},
                                     Part{&kBasses, kAnswerBasses}};
constexpr Score kAnswer = {kMarch, 2.95, 0.60, kAnswerParts, kAnswerKettle};

// The farewell: the minor chord on G, broken downwards, sinks into the tonic. Soft throughout, since it
// also says "no" to a refused step.
constexpr std::array kFarewellTune = {
    Note{0.00, 1.10, "D5", 0.62},
    Note{1.00, 1.10, "Bb4", 0.60},
    Note{2.00, 1.10, "G4", 0.60},
    Note{3.00, 3.20, "F#4", 0.64},
};
constexpr std::array kFarewellAlto = {Note{0.00, 3.00, "D4", 0.50}, Note{3.00, 3.20, "D4", 0.56}};
constexpr std::array kFarewellTenor = {Note{0.00, 3.00, "Bb3", 0.52}, Note{3.00, 3.20, "A3", 0.56}};
constexpr std::array kFarewellCelli = {Note{0.00, 3.00, "G3", 0.54}, Note{3.00, 3.20, "D3", 0.58}};
constexpr std::array kFarewellBasses = {Note{0.00, 3.00, "G2", 0.48}, Note{3.00, 3.20, "D2", 0.52}};
constexpr std::array kFarewellKettle = {Note{3.00, 0.0, "D2", 0.35}};
constexpr std::array kFarewellParts = {Part{&kHorns, kFarewellTune}, Part{&kHorns, kFarewellAlto},
                                       Part{&kHorns, kFarewellTenor}, Part{&kCelli, kFarewellCelli},
                                       Part{&kBasses, kFarewellBasses}};
constexpr Score kFarewell = {0.165, 1.48, 0.40, kFarewellParts, kFarewellKettle};

// The chant: the chord that theme and answer end on. The voices come in from below, a breath apart,
// and as choirs do, they sing third and fifth pure: a keyboard's third beats against the low D's overtones.
constexpr std::array kChant = {
    SungNote{"D3", 0.0, &kLowThroat, 0.000, 0.85},
    SungNote{"A3", 2.0, &kLowThroat, 0.015, 0.90},
    SungNote{"D4", 0.0, &kHighThroat, 0.030, 0.72},
    SungNote{"F#4", -13.7, &kHighThroat, 0.045, 0.60},
};
constexpr double kChantHeld = 0.62;    // seconds
constexpr double kChantLength = 1.50;  // seconds

constexpr Pitch kKnockPitch = "D6";
constexpr double kKnockLength = 0.09;  // seconds

// The seeds decide how the players of a section drift against each other. These two were picked among some
// dozens for the steadiest swell.
constexpr std::uint32_t kBandSeed = 717355021;
constexpr std::uint32_t kChoirSeed = 550291313;
constexpr std::uint32_t kKnockSeed = 45214;

Samples PlayScore(const Score& score) {
    Noise noise(kBandSeed);
    Samples mix(FrameCount(score.length), 0.0);
    for (const Part& part : score.parts) {
        for (const Note& note : part.notes) PlayTone(mix, *part.section, note, score.beat, noise);
    }
    for (const Note& note : score.kettle) {
        PlayStrike(mix, kFeltStick, note.pitch.Hertz(), note.start * score.beat, 0.19 * note.force, noise);
    }
    AddRoom(mix, kHall);
    Polish(mix, score.fadeOut);
    SetLoudness(mix, ActiveLoudness(mix), kLoudness);
    return mix;
}

Samples PlayChant() {
    Noise noise(kChoirSeed);
    Samples mix(FrameCount(kChantLength), 0.0);
    for (const SungNote& note : kChant) Sing(mix, note, kChantHeld, noise);
    AddRoom(mix, kChapel);
    Polish(mix, 0.40);
    SetLoudness(mix, ActiveLoudness(mix), kChantLoudness);
    return mix;
}

Samples PlayKnock() {
    Noise noise(kKnockSeed);
    Samples mix(FrameCount(kKnockLength), 0.0);
    PlayStrike(mix, kKnuckle, kKnockPitch.Hertz(), 0.0, 1.0, noise);
    Polish(mix, 0.03);
    SetLoudness(mix, KnockLoudness(mix), kKnockLoudness);
    return mix;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: make_sounds OUTPUT_FOLDER\n";
        return 2;
    }
    try {
        const std::filesystem::path folder = argv[1];
        WriteWave(folder / "theme.wav", PlayScore(kTheme));
        WriteWave(folder / "theme2.wav", PlayScore(kAnswer));
        WriteWave(folder / "click.wav", PlayKnock());
        WriteWave(folder / "chant.wav", PlayChant());
        WriteWave(folder / "quit.wav", PlayScore(kFarewell));
    } catch (const std::exception& error) {
        std::cerr << "make_sounds: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
