#pragma once

#include <QVector>
#include <random>

namespace storm {

/// Chance from a seed.
class Chance
{
public:
    explicit Chance(quint32 seed)
        : m_random(seed)
    {}

    /// From `least` to `most`, both included.
    int number(int least, int most)
    {
        return least + static_cast<int>(m_random() % static_cast<quint32>(most - least + 1));
    }
    double fraction() { return static_cast<double>(m_random()) / 4294967296.0; }
    bool happens(double probability) { return fraction() < probability; }

    /// One of several, which must not be empty.
    template <typename List>
    auto oneOf(const List &list)
    {
        return list.at(number(0, static_cast<int>(list.size()) - 1));
    }

private:
    std::mt19937 m_random;
};

} // namespace storm
