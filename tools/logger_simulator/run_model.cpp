#include "tools/logger_simulator/run_model.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace kvo::simulator {
namespace {

constexpr double step = 0.01;
constexpr double idleRpm = 2100;
constexpr std::uint8_t transBrake = 1;
constexpr std::uint8_t wideOpen = 2;
constexpr std::uint8_t shiftLight = 4;
constexpr std::uint8_t twoStep = 8;

// Noise of sensors, the same on every machine.
class Noise {
public:
    explicit Noise(std::uint32_t seed) : m_state(seed * 2654435761U + 12345U) {}
    // -1 to 1.
    double next() {
        m_state = m_state * 1664525U + 1013904223U;
        return static_cast<double>(m_state >> 8) / 8388608.0 - 1.0;
    }

private:
    std::uint32_t m_state;
};

std::uint8_t toByte(double value) {
    return static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

// Turns a minute of a rear wheel of so many inches at a speed.
double wheelRpm(double mph, double inches) {
    return mph * 1056.0 / (std::numbers::pi * inches);
}

class Pass {
public:
    Pass(const Vehicle& vehicle, int launch, std::uint32_t seed)
        : m_vehicle(vehicle), m_staging(-0.75 * launch * step), m_noise(seed),
          m_primary(static_cast<double>(vehicle.crankTeeth) / vehicle.basketTeeth) {
        for (std::size_t c = 0; c < m_exhaustC.size(); ++c)
            m_exhaustC[c] = 330 + 6 * m_noise.next();
    }

    // Time in seconds from the launch, in steps of 1/100.
    Moment at(double t) {
        Moment moment;
        moment.mph = speed(t);
        moment.outputRpm = output(t, moment.mph);
        chooseGear(t, moment.outputRpm);
        moment.inputRpm = moment.outputRpm * ratio(t);
        m_engineRpm = engine(t, moment.inputRpm / m_primary);
        moment.engineRpm = m_engineRpm * (1 + 0.004 * m_noise.next());
        moment.switches = switches(t);
        sensors(t, moment);
        return moment;
    }

private:
    bool racing(double t) const { return t >= 0 && t < m_vehicle.finishSeconds; }
    bool stopped(double t) const { return t > m_vehicle.finishSeconds + 4; }

    double speed(double t) const {
        constexpr double build = 2.6; // seconds
        const double finish = m_vehicle.finishSeconds;
        if (t < 0) return 0;
        const double fraction =
            (1 - std::exp(-std::min(t, finish) / build)) / (1 - std::exp(-finish / build));
        const double coast = t > finish ? std::exp(-(t - finish) / 3.4) : 1;
        return m_vehicle.finishMph * fraction * coast;
    }

    double output(double t, double mph) {
        double slip = 0;
        if (racing(t)) {
            slip = 0.04 + 0.25 * std::exp(-t / 0.45);
            if (m_gear > 0) slip += 0.05 * std::exp(-(t - m_shiftedAt) / 0.12);
        }
        // The tyre spins up within the first few hundredths, before the car has moved.
        const double spin = racing(t) ? 22 * (1 - std::exp(-t / 0.03)) * std::exp(-t / 0.5) : 0;
        const double rpm =
            wheelRpm(mph * (1 + slip) + spin, m_vehicle.rearTyreInches) * m_vehicle.finalDrive;
        return rpm * (1 + 0.003 * m_noise.next());
    }

    void chooseGear(double t, double outputRpm) {
        if (!racing(t) || t - m_shiftedAt < 0.25) return;
        if (m_gear + 1 >= m_vehicle.gears.size()) return;
        if (outputRpm * m_vehicle.gears[m_gear] / m_primary < m_vehicle.shiftRpm) return;
        ++m_gear;
        m_shiftedAt = t;
    }

    // Slides from one gear to the next within the shift.
    double ratio(double t) const {
        constexpr double shiftTime = 0.06;
        const double now = m_vehicle.gears[m_gear];
        if (m_gear == 0 || t - m_shiftedAt >= shiftTime) return now;
        const double before = m_vehicle.gears[m_gear - 1];
        return before + (now - before) * (t - m_shiftedAt) / shiftTime;
    }

    double engine(double t, double locked) const {
        if (t < m_staging) return idleRpm;
        if (t < 0) {
            const double rise = 1 - std::exp(-(t - m_staging) / 0.08);
            const double hunting = 90 * std::sin(t * 75);
            return idleRpm + (m_vehicle.launchRpm - idleRpm + hunting) * rise;
        }
        if (racing(t)) {
            // The clutch slips until the input shaft has caught up.
            const double flash =
                m_vehicle.launchRpm + 0.12 * m_vehicle.shiftRpm * (1 - std::exp(-t / 0.15));
            return std::max(locked * (1 + 0.10 * std::exp(-t / 0.9) + m_vehicle.clutchSlip),
                std::min(flash, 0.97 * m_vehicle.shiftRpm));
        }
        const double since = t - m_vehicle.finishSeconds;
        if (stopped(t)) return m_engineRpm < 60 ? 0 : m_engineRpm * 0.93;
        return std::max(idleRpm, locked * std::exp(-since / 1.2));
    }

    std::uint8_t switches(double t) const {
        std::uint8_t bits = 0;
        if (t >= m_staging - 0.15 && t < 0) bits |= transBrake;
        if (t >= m_staging && t < 0) bits |= twoStep;
        if (t >= m_staging && t < m_vehicle.finishSeconds) bits |= wideOpen;
        const bool more = m_gear + 1 < m_vehicle.gears.size();
        if (racing(t) && more && m_engineRpm > 0.96 * m_vehicle.shiftRpm) bits |= shiftLight;
        return bits;
    }

    double throttle(double t) const {
        if (t < m_staging) return 0.06;
        if (t < m_vehicle.finishSeconds) return std::min(1.0, 0.06 + (t - m_staging) * 8);
        return std::max(0.02, 1 - (t - m_vehicle.finishSeconds) * 6);
    }

    void sensors(double t, Moment& moment) {
        const double open = throttle(t);
        const double turn = m_engineRpm / m_vehicle.shiftRpm;
        const double pull = (speed(t) - speed(t - step)) / step / 21.937; // g
        m_oil += (std::min(1.0, 0.15 + turn * 0.85) - m_oil) * 0.05;
        if (m_engineRpm < 300) m_oil *= 0.985;
        m_boost += (open * turn * turn - m_boost) * 0.08;
        m_water += (m_engineRpm > 300 ? 0.004 * open : 0.001);
        const double raw[8] = {40 + 170 * m_oil, 22 + 205 * m_boost, 12 + 200 * open * turn,
            176 - 6 * open + (m_engineRpm < 300 ? -14 : 0), 64 + 42 * pull, 8 + 238 * open,
            118 + m_water, 124 + 26 * open};
        for (std::size_t c = 0; c < 8; ++c)
            moment.analog[c] = toByte(raw[c] + 1.2 * m_noise.next());
        const double wanted = m_engineRpm < 300 ? 120 : 330 + 520 * open * std::min(1.0, turn);
        for (std::size_t c = 0; c < 8; ++c) {
            const double cylinder = wanted + 14 * std::sin(1.7 * static_cast<double>(c));
            m_exhaustC[c] += (cylinder - m_exhaustC[c]) * (wanted > m_exhaustC[c] ? 0.008 : 0.003);
            moment.exhaust[c] = toByte((m_exhaustC[c] + 3 * m_noise.next()) / 4);
        }
    }

    const Vehicle& m_vehicle;
    double m_staging; // when the driver goes onto the two step
    Noise m_noise;
    double m_primary;
    std::size_t m_gear = 0;
    double m_shiftedAt = 0;
    double m_engineRpm = idleRpm;
    double m_oil = 0.3;
    double m_boost = 0;
    double m_water = 0;
    std::array<double, 8> m_exhaustC{};
};

struct VehicleOfType {
    int dataType;
    Vehicle vehicle;
};

const std::array<VehicleOfType, 7>& vehicles() {
    // The cars fit the vehicle of a new installation: 25 inch front wheel, 33 inch tyre, 41 to 10.
    static const std::array<VehicleOfType, 7> all{{
        // type  bike   gears       launch shift  mph  s   teeth front rear final drive
        {8, {false, {1.80, 1.00}, 4600, 7700, 172, 8.1, 1, 1, 25.0, 33.0, 4.1}},
        {12, {false, {1.76, 1.00}, 5000, 8200, 181, 7.7, 1, 1, 25.0, 33.0, 4.1}},
        {17, {false, {2.10, 1.40, 1.00}, 5400, 8700, 194, 7.1, 1, 1, 25.0, 33.0, 4.1}},
        {20, {true, {2.90, 2.10, 1.65, 1.32, 1.10}, 7200, 11200, 176, 7.9, 62, 98, 24.5, 26.0,
                 2.68}},
        {25, {false, {1.80, 1.00}, 5600, 9000, 203, 6.8, 1, 1, 25.0, 33.0, 4.1}},
        {32, {false, {1.00}, 5200, 9200, 208, 6.6, 1, 1, 25.0, 33.0, 4.1}},
        {43, {true, {2.85, 2.05, 1.60, 1.33, 1.15, 1.02}, 7600, 12000, 198, 7.2, 58, 96, 24.5, 26.5,
                 2.68}},
    }};
    return all;
}

} // namespace

const Vehicle& vehicleFor(int dataType) {
    for (const auto& entry : vehicles())
        if (entry.dataType == dataType) return entry.vehicle;
    return vehicles().front().vehicle;
}

std::vector<Moment> makeRun(const Vehicle& vehicle, int count, int launch, std::uint32_t seed) {
    Pass pass(vehicle, launch, seed);
    std::vector<Moment> run;
    run.reserve(static_cast<std::size_t>(count));
    for (int i = 1; i <= count; ++i) run.push_back(pass.at((i - launch) * step));
    return run;
}

} // namespace kvo::simulator
