// Simulating and packing.
#include "sweep/worker.h"

#include "sim/engine.h"

#include <algorithm>
#include <utility>

namespace ostrand::sweep {
/// Simulations that go on together, and the points recorded since some were last kept.
struct Worker::Group {
    sim::LaneGroup lanes;
    std::uint64_t first_simulation;
    std::uint64_t time_steps;
    std::uint32_t first_point;
    std::vector<std::uint32_t> points = {}; // by point, displayed species, simulation
};

Worker::Worker (const SweepPlan& plan, std::span<const sim::LaneKernel> kernels, Progress& progress)
    : plan_ (plan), kernels_ (kernels), progress_ (progress) {}

bool Worker::run (const Task& task, const RecordSink& sink, const std::stop_token& stop) {
    kept_ = Clock::now ();
    if (task.kind == Task::Kind::pack) return pack (*task.unit, task.counts, sink);
    of_unit_.clear ();
    const bool done = simulate (task, sink, stop);
    if (!done || !task.unit) return keep_finished (sink) && done;
    finished_ = {};
    return pack (*task.unit, of_unit_, sink);
}

bool Worker::simulate (const Task& task, const RecordSink& sink, const std::stop_token& stop) {
    if (task.unit) {
        of_unit_.resize (task.simulations * plan_.identity ().lines_each ());
        unit_begin_ = task.first_simulation;
    }
    const std::uint64_t end = task.first_simulation + task.simulations;
    const std::uint64_t width = sim::widest (kernels_);
    for (std::uint64_t first = task.first_simulation; first < end; first += width) {
        const std::uint64_t size = std::min (width, end - first);
        std::vector<sim::SimulationState> states;
        if (task.states.empty ()) {
            for (std::uint64_t i = 0; i < size; ++i) states.push_back (plan_.start (first + i));
        } else {
            const auto begin =
                task.states.begin () + static_cast<std::ptrdiff_t> (first - task.first_simulation);
            states.assign (begin, begin + static_cast<std::ptrdiff_t> (size));
        }
        const bool fresh = task.states.empty ();
        Group group{sim::LaneGroup (plan_.model (), kernels_, states), first, task.time_steps,
                    fresh ? 0 : static_cast<std::uint32_t> (task.time_steps / sim::stats) + 1};
        if (!run_group (group, sink, stop)) return false;
        if (Clock::now () - kept_ > longest_unkept && !keep_finished (sink)) return false;
    }
    return true;
}

bool Worker::run_group (Group& group, const RecordSink& sink, const std::stop_token& stop) {
    const std::uint64_t end = plan_.time_steps ();
    const auto record_point = [&] {
        for (const std::uint32_t species : plan_.displayed ()) {
            for (std::size_t i = 0; i < group.lanes.size (); ++i) {
                group.points.push_back (group.lanes.count (species, i));
            }
        }
        progress_.add_progress (group.lanes.size ());
    };
    if (group.first_point == 0) record_point ();
    while (group.time_steps < end) {
        if (stop.stop_requested ()) {
            keep_slice (group, sink);
            return false;
        }
        const std::uint32_t now = sim::next_portion (group.lanes, group.time_steps);
        group.lanes.advance (now);
        group.time_steps += now;
        if (group.time_steps % sim::stats == 0) record_point ();
        if (group.time_steps < end && Clock::now () - kept_ > longest_unkept) {
            if (!keep_finished (sink) || !keep_slice (group, sink)) return false;
        }
    }
    return keep_slice (group, sink);
}

/// Of a group that is finished and never was cut, the points wait for those of the next groups.
bool Worker::keep_slice (Group& group, const RecordSink& sink) {
    const std::size_t simulations = group.lanes.size ();
    const std::size_t n_displayed = plan_.displayed ().size ();
    const std::size_t points = group.points.size () / (n_displayed * simulations);
    const bool finished = group.time_steps == plan_.time_steps ();
    SeriesRecord slice;
    slice.first_simulation = group.first_simulation;
    slice.simulations = static_cast<std::uint32_t> (simulations);
    slice.first_point = group.first_point;
    slice.points = static_cast<std::uint32_t> (points);
    slice.time_steps = group.time_steps;
    slice.counts.resize (group.points.size ());
    for (std::size_t p = 0; p < points; ++p) {
        for (std::size_t d = 0; d < n_displayed; ++d) {
            for (std::size_t i = 0; i < simulations; ++i) {
                slice.counts[(i * n_displayed + d) * points + p] =
                    group.points[(p * n_displayed + d) * simulations + i];
            }
        }
    }
    if (!of_unit_.empty ()) {
        // Whole lines of whole simulations are what a unit that is simulated at once consists of.
        std::uint32_t* const to = of_unit_.data () + (group.first_simulation - unit_begin_) *
                                                         n_displayed * plan_.n_points ();
        for (std::size_t row = 0; row < simulations * n_displayed; ++row) {
            std::copy_n (slice.counts.data () + row * points, points,
                         to + row * plan_.n_points () + group.first_point);
        }
    }
    group.points.clear ();
    group.first_point += slice.points;
    if (finished && slice.first_point == 0) {
        if (finished_.simulations == 0) {
            finished_ = std::move (slice);
            return true;
        }
        finished_.simulations += slice.simulations;
        finished_.counts.insert (finished_.counts.end (), slice.counts.begin (),
                                 slice.counts.end ());
        return true;
    }
    if (!finished) {
        for (std::size_t i = 0; i < simulations; ++i)
            slice.states.push_back (group.lanes.state (i));
    }
    kept_ = Clock::now ();
    return sink (RecordKind::series, slice.to_bytes ());
}

bool Worker::keep_finished (const RecordSink& sink) {
    kept_ = Clock::now ();
    if (finished_.simulations == 0) return true;
    const SeriesRecord record = std::exchange (finished_, {});
    return sink (RecordKind::series, record.to_bytes ());
}

bool Worker::pack (std::uint64_t unit, std::span<const std::uint32_t> counts,
                   const RecordSink& sink) {
    return sink (RecordKind::unit, deflated_unit (plan_.identity (), unit, counts).to_bytes ());
}

} // namespace ostrand::sweep
