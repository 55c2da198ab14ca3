// The plain second simulator.
#include "sim/plain_simulator.h"

#include "base/text.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace ostrand::sim::plain {
namespace {

struct Step {
    std::vector<int> in;
    std::vector<int> out;
    float k;
};

struct Tables {
    std::vector<std::string> names;
    std::map<std::string, int> index;
    std::map<int, std::vector<std::uint32_t>> conc;
    std::vector<std::vector<int>> links;
    std::vector<Step> steps;

    int at (const std::string& name) {
        const auto [place, fresh] = index.try_emplace (name, static_cast<int> (names.size ()));
        if (fresh) names.push_back (name);
        return place->second;
    }
};

std::uint32_t molecules (float mm) {
    return static_cast<std::uint32_t> (static_cast<double> (mm) * 1000.0 * 602.252);
}

/// One enzyme statement; complexes are named by the digits of their substrates.
class Binder {
  public:
    Binder (Tables& t, const Statement& s, int number) : t_ (t), n_ (s.left.size () - 1) {
        const float kcat = s.numbers.back ();
        const double koff = static_cast<double> (kcat) / 100000.0;
        koff_ = static_cast<float> (koff);
        const float klast = kcat / 10000.0F;
        const float sum = static_cast<float> (static_cast<double> (kcat) / 10000.0 + koff);
        const float square = sum * sum + 1.0F;
        const double d = static_cast<double> (square) * 0.448;
        enzyme_ = t.at (s.left[0]);
        for (std::size_t j = 0; j < n_; ++j) {
            substrates_.push_back (t.at (s.left[j + 1]));
            kon_.push_back (static_cast<float> (static_cast<double> (sum) /
                                                (static_cast<double> (s.numbers[j]) * d)));
        }
        std::vector<int> products;
        for (const std::string& name : s.right) products.push_back (t.at (name));
        suffix_ = "_cplx_" + std::to_string (number);
        all_ = std::string ("0123").substr (0, n_);
        t.at ("F" + suffix_.substr (1));
        if (n_ == 2) make ({"0", "1"});
        if (n_ == 3) make ({"0", "01", "1", "02", "2", "12"});
        if (n_ == 4) {
            make ({"0", "1", "2", "3", "01", "02", "03", "12", "13", "23", "012", "013", "023",
                   "123"});
        }
        steps ();
        Step last{{of (all_)}, {enzyme_}, klast};
        for (std::size_t i = 0; i < std::min<std::size_t> (4, products.size ()); ++i) {
            last.out.push_back (products[i]);
        }
        t.steps.push_back (last);
    }

  private:
    void make (const std::vector<std::string>& sets) {
        for (const std::string& set : sets) of (set);
    }
    int of (const std::string& set) {
        if (set.empty ()) return enzyme_;
        if (set == all_) return t_.at ("F" + suffix_.substr (1));
        // The third pair of a statement with three substrates has a name out of line.
        return t_.at ("E" + (n_ == 3 && set == "12" ? std::string ("03") : set) + suffix_);
    }
    static std::string with (std::string set, std::size_t j) {
        set += static_cast<char> ('0' + j);
        std::sort (set.begin (), set.end ());
        return set;
    }
    void bind (const std::string& set, std::size_t j) {
        t_.steps.push_back ({{of (set), substrates_[j]}, {of (with (set, j))}, kon_[j]});
    }
    void release (const std::string& set, std::size_t j) {
        t_.steps.push_back ({{of (with (set, j))}, {of (set), substrates_[j]}, koff_});
    }
    void both (const std::string& set, std::size_t j) {
        bind (set, j);
        release (set, j);
    }
    static std::string digit (std::size_t i) {
        return std::string (1, static_cast<char> ('0' + i));
    }
    std::string all_but (std::size_t i) const {
        std::string set = all_;
        set.erase (i, 1);
        return set;
    }
    void steps () {
        if (n_ == 1) both ("", 0);
        if (n_ == 2 || n_ == 3) {
            for (std::size_t i = 0; i < n_; ++i) {
                both ("", i);
                for (std::size_t j = 0; j < n_; ++j) {
                    if (j != i) both (digit (i), j);
                }
                if (n_ == 3) both (all_but (i), i);
            }
        }
        if (n_ != 4) return;
        for (std::size_t i = 0; i < 4; ++i) both ("", i);
        for (std::size_t i = 0; i < 4; ++i) {
            for (std::size_t j = 0; j < 4; ++j) {
                if (j != i) both (digit (i), j);
            }
        }
        for (const std::string set : {"01", "02", "03", "12", "13", "23"}) {
            std::vector<std::size_t> missing;
            for (std::size_t j = 0; j < 4; ++j) {
                if (set.find (digit (j)) == std::string::npos) missing.push_back (j);
            }
            for (const std::size_t j : missing) bind (set, j);
            for (const std::size_t j : missing) release (set, j);
        }
        for (std::size_t i = 0; i < 4; ++i) both (all_but (i), i);
    }

    Tables& t_;
    std::size_t n_;
    int enzyme_ = 0;
    std::vector<int> substrates_;
    std::vector<float> kon_;
    float koff_ = 0;
    std::string suffix_;
    std::string all_;
};

Tables build (const Model& model, int number) {
    Tables t;
    for (const Statement& s : model.statements) {
        std::vector<int> left;
        for (const std::string& name : s.left) left.push_back (t.at (name));
        switch (s.kind) {
        case Statement::mass_action: {
            Step step{left, {}, s.numbers[0]};
            for (const std::string& name : s.right) step.out.push_back (t.at (name));
            t.steps.push_back (step);
            ++number;
            break;
        }
        case Statement::enzyme: Binder (t, s, number++); break;
        case Statement::inhibitor: {
            const int complex = t.at ("Icplx_" + std::to_string (number++));
            const auto kon =
                static_cast<float> (0.001 / (static_cast<double> (s.numbers[0]) * 0.448000448));
            t.steps.push_back ({left, {complex}, kon});
            t.steps.push_back ({{complex}, left, 0.001F});
            break;
        }
        case Statement::values:
            t.conc[left[0]].clear ();
            for (const float mm : s.numbers) t.conc[left[0]].push_back (molecules (mm));
            break;
        case Statement::link: t.links.push_back (left); break;
        }
    }
    for (const std::string& name : model.displayed) t.at (name);
    for (std::size_t i = 0; i < t.names.size (); ++i) {
        t.conc.try_emplace (static_cast<int> (i), std::vector<std::uint32_t>{0});
    }
    return t;
}

/// Groups in order of their first species; links of the random models do not overlap.
std::vector<std::vector<int>> groups_of (const Tables& t) {
    std::vector<std::vector<int>> groups;
    for (int i = 0; i < static_cast<int> (t.names.size ()); ++i) {
        bool member = false;
        std::vector<int> group{i};
        for (const std::vector<int>& link : t.links) {
            const bool inside = std::find (link.begin (), link.end (), i) != link.end ();
            if (inside && link[0] == i) group = link;
            if (inside && link[0] != i) member = true;
        }
        if (!member) groups.push_back (group);
    }
    return groups;
}

void fill_up (Tables& t, const std::vector<int>& group) {
    std::size_t most = 0;
    for (const int i : group) most = std::max (most, t.conc[i].size ());
    for (const int i : group) t.conc[i].resize (most, t.conc[i].back ());
}

std::uint32_t whole (double value) {
    if (!(value > 0)) return 0;
    return value >= 4294967296.0 ? 0xFFFFFFFFU : static_cast<std::uint32_t> (value);
}

struct Random {
    std::uint64_t x, y;
    float next () {
        std::uint64_t a = x;
        const std::uint64_t b = y;
        x = b;
        a = a ^ (a << 23);
        y = a ^ b ^ (a >> 17) ^ (b >> 26);
        return static_cast<float> (y + b) * 5.42101086242752217e-20F;
    }
};

void apply (const Step& e, std::vector<std::uint32_t>& r, Random& random) {
    const std::size_t m = static_cast<std::size_t> (e.in[0]);
    const std::uint32_t a = r[m];
    if (a == 0) return;
    std::vector<std::uint32_t> before;
    for (const int p : e.out) before.push_back (r[static_cast<std::size_t> (p)]);
    const float u = random.next ();
    float mean = 0;
    std::uint32_t most = 0xFFFFFFFFU;
    std::uint32_t c = 0;
    if (e.in.size () == 1) {
        mean = static_cast<float> (a) * e.k;
    } else {
        c = r[static_cast<std::size_t> (e.in[1])];
        if (c == 0) return;
        mean = e.k * 7.4e-7F;
        mean = mean * static_cast<float> (a);
        mean = mean * static_cast<float> (c);
        most = std::min (a, c);
    }
    std::uint32_t n = whole (static_cast<double> (mean));
    if (mean - static_cast<float> (n) > u) n += 1;
    n = std::min (n, most);
    r[m] = a - n;
    if (e.in.size () == 2) r[static_cast<std::size_t> (e.in[1])] = c - n;
    for (std::size_t i = 0; i < e.out.size (); ++i) {
        std::uint32_t& product = r[static_cast<std::size_t> (e.out[i])];
        product = (i < 2 ? before[i] : product) + n;
    }
}

void apply (const Step& e, std::vector<double>& r, Random&) {
    const std::size_t m = static_cast<std::size_t> (e.in[0]);
    const double a = r[m];
    if (a < 1.0) return;
    std::vector<double> before;
    for (const int p : e.out) before.push_back (r[static_cast<std::size_t> (p)]);
    double n = 0;
    double c = 0;
    if (e.in.size () == 1) {
        n = static_cast<double> (e.k) * a;
    } else {
        c = r[static_cast<std::size_t> (e.in[1])];
        if (c < 1.0) return;
        const float f = e.k * 7.4e-7F;
        n = static_cast<double> (f) * a * c;
        if (n > a) n = a;
        if (n > c) n = c;
    }
    r[m] = a - n;
    if (e.in.size () == 2) r[static_cast<std::size_t> (e.in[1])] = c - n;
    for (std::size_t i = 0; i < e.out.size (); ++i) {
        double& product = r[static_cast<std::size_t> (e.out[i])];
        product = (i < 2 ? before[i] : product) + n;
    }
}

template <class Count>
std::vector<std::vector<std::uint32_t>> run_one (const Tables& t, std::vector<Count> r, int seconds,
                                                 Random random) {
    std::vector<std::vector<std::uint32_t>> points (t.names.size ());
    for (int second = 0; second < seconds; ++second) {
        for (std::size_t i = 0; i < t.names.size (); ++i) {
            points[i].push_back (whole (static_cast<double> (r[i])));
        }
        if (second + 1 == seconds) break; // what the last second does is never recorded
        for (int step = 0; step < 10000; ++step) {
            for (std::size_t i = 0; i < t.steps.size (); ++i) {
                apply (t.steps[step % 2 == 0 ? i : t.steps.size () - 1 - i], r, random);
            }
        }
    }
    return points;
}

} // namespace

Result simulate (const Model& model, bool stochastic, int first_number) {
    Tables t = build (model, first_number);
    const auto groups = groups_of (t);
    std::size_t n_simul = 1;
    for (const auto& group : groups) {
        fill_up (t, group);
        n_simul *= t.conc[group[0]].size ();
    }
    Result result;
    result.names = t.names;
    std::uint64_t seed = 3;
    for (std::size_t s = 0; s < n_simul; ++s) {
        Random random{0x44E2068BF01FB7, 0x12BB113D13EAF7F};
        if (s > 0) {
            for (int i = 0; i < 3; ++i) {
                seed = seed * 1103515245 + 12345;
                if (i == 1) random.x = seed;
                if (i == 2) random.y = seed;
            }
        }
        std::vector<std::uint32_t> start (t.names.size ());
        std::size_t rest = s;
        for (std::size_t g = groups.size (); g-- > 0;) {
            const std::size_t size = t.conc[groups[g][0]].size ();
            for (const int i : groups[g]) {
                start[static_cast<std::size_t> (i)] = t.conc[i][rest % size];
            }
            rest /= size;
        }
        result.counts.push_back (
            stochastic
                ? run_one<std::uint32_t> (t, start, model.seconds, random)
                : run_one<double> (t, {start.begin (), start.end ()}, model.seconds, random));
    }
    return result;
}

std::string result_text (const Model& model, const Result& result, int first_number) {
    Tables t = build (model, first_number);
    const auto groups = groups_of (t);
    const auto shown = [&model] (const std::string& name) {
        return std::find (model.displayed.begin (), model.displayed.end (), name) !=
               model.displayed.end ();
    };
    std::string text = std::to_string (result.counts.size ()) + " ";
    std::size_t n_displayed = 0;
    for (const std::string& name : t.names) n_displayed += shown (name) ? 1 : 0;
    text += std::to_string (n_displayed) + " " + std::to_string (model.seconds) + "\n";
    for (const std::string& name : t.names) {
        if (shown (name)) text += name + "\n12345600\n";
    }
    std::string blocks;
    int n_var = 0;
    for (const auto& group : groups) {
        fill_up (t, group);
        const std::vector<std::uint32_t>& values = t.conc[group[0]];
        if (values.size () < 2) continue;
        ++n_var;
        blocks += t.names[static_cast<std::size_t> (group[0])] + "\n" +
                  std::to_string (values.size ()) + "\n";
        for (const std::uint32_t value : values) blocks += std::to_string (value) + "\n";
    }
    text += std::to_string (n_var) + "\n" + blocks;
    for (const auto& simulation : result.counts) {
        for (std::size_t i = 0; i < t.names.size (); ++i) {
            if (!shown (t.names[i])) continue;
            for (const std::uint32_t count : simulation[i]) text += std::to_string (count) + "\n";
        }
    }
    return text;
}

std::string Model::text () const {
    const auto sum = [] (const std::vector<std::string>& names, std::size_t from,
                         const char* between) {
        std::string out;
        for (std::size_t i = from; i < names.size (); ++i) {
            out += (i > from ? between : "") + names[i];
        }
        return out;
    };
    const auto number = [] (float value) { return format_g (static_cast<double> (value), 9); };
    std::string text;
    for (const Statement& s : statements) {
        switch (s.kind) {
        case Statement::mass_action:
            text += sum (s.left, 0, " + ") + " -> " + sum (s.right, 0, " + ") + " | " +
                    number (s.numbers[0]);
            break;
        case Statement::enzyme:
            text += s.left[0] + " : " + sum (s.left, 1, " + ") + " -> " + sum (s.right, 0, " + ") +
                    " | ";
            for (std::size_t j = 0; j + 1 < s.numbers.size (); ++j) {
                text += (j > 0 ? ", " : "") + number (s.numbers[j]) + " mM";
            }
            text += " - " + number (s.numbers.back ());
            break;
        case Statement::inhibitor:
            text += s.left[0] + " : " + s.left[1] + " | " + number (s.numbers[0]) + "mM";
            break;
        case Statement::values:
            text += "[" + s.left[0] + "] = ";
            for (std::size_t j = 0; j < s.numbers.size (); ++j) {
                text += (j > 0 ? ", " : "") + number (s.numbers[j]) + " mM";
            }
            break;
        case Statement::link: text += "linked (" + sum (s.left, 0, ", ") + ")"; break;
        }
        text += ";\n";
    }
    if (!displayed.empty ()) {
        text += "display (";
        for (std::size_t i = 0; i < displayed.size (); ++i) {
            text += (i > 0 ? ", " : "") + displayed[i] + " #123456";
        }
        text += ");\n";
    }
    return text + "duration = " + std::to_string (seconds) + ";\n";
}

Model random_model (unsigned seed) {
    std::mt19937 random (seed);
    const auto below = [&random] (int n) {
        return static_cast<int> (random () % static_cast<unsigned> (n));
    };
    const auto real = [&random] (float low, float high) {
        return low * std::pow (high / low, static_cast<float> (random () % 10000) / 10000.0F);
    };
    std::vector<std::string> names;
    const int n_names = 3 + below (7);
    for (int i = 0; i < n_names; ++i) names.push_back ("s" + std::to_string (i) + "x");
    const auto any = [&] { return names[static_cast<std::size_t> (below (n_names))]; };
    Model model;
    model.seconds = 1 + below (2);
    const int kinetics = 1 + below (5);
    for (int i = 0; i < kinetics; ++i) {
        Statement s{};
        switch (below (4)) {
        case 0:
        case 1:
            s.kind = Statement::enzyme;
            s.left = {any ()};
            for (int j = 1 + below (4); j > 0; --j) {
                s.left.push_back (any ());
                s.numbers.push_back (real (1e-4F, 2.0F));
            }
            for (int j = 1 + below (5); j > 0; --j) s.right.push_back (any ());
            s.numbers.push_back (real (0.5F, 2000.0F));
            break;
        case 2:
            s.kind = Statement::mass_action;
            for (int j = 1 + below (2); j > 0; --j) s.left.push_back (any ());
            for (int j = 1 + below (2); j > 0; --j) s.right.push_back (any ());
            s.numbers = {s.left.size () == 1 ? real (1e-6F, 1.2F) : real (1e-3F, 500.0F)};
            break;
        default:
            s.kind = Statement::inhibitor;
            s.left = {any (), any ()};
            s.numbers = {real (1e-4F, 1.0F)};
            break;
        }
        model.statements.push_back (s);
    }
    std::vector<std::string> swept;
    for (const std::string& name : names) {
        if (below (4) == 0) continue;
        Statement s{Statement::values, {name}, {}, {}};
        const int count = swept.size () < 3 && below (4) == 0 ? 2 + below (2) : 1;
        for (int j = 0; j < count; ++j) s.numbers.push_back (real (1e-6F, 3.0F));
        if (count > 1) swept.push_back (name);
        model.statements.push_back (s);
    }
    if (swept.size () >= 2 && below (2) == 0) {
        if (below (2) == 0) std::swap (swept[0], swept[1]);
        model.statements.push_back ({Statement::link, {swept[0], swept[1]}, {}, {}});
    }
    for (const std::string& name : names) {
        if (below (2) == 0) model.displayed.push_back (name);
    }
    return model;
}

} // namespace ostrand::sim::plain
