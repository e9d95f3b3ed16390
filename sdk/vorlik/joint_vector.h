// One robot configuration as the host and the plug-in exchange it.
#pragma once

#include <QString>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdint>

// One robot configuration as exchanged with the host: a joint count (at most
// 12) and the joint values in the host's joint units (degrees for rotary joints).
// A count of 0 means that no configuration is held.
class JointVector {
public:
    static constexpr int MaxJoints = 12;

    // Zeroed record of `count` joints (clamped to MaxJoints).
    explicit JointVector(int count = 0) : count_(std::clamp(count, 0, MaxJoints)) {}

    // Copies `count` values; a negative count keeps the present count (0 for a
    // new record) and copies that many.
    JointVector(const double* values, int count) { assign(values, count); }

    void assign(const double* values, int count)
    {
        if (count >= 0)
            count_ = std::min(count, MaxJoints);
        for (int i = 0; i < count_; ++i)
            values_[i] = values[i];
    }

    int count() const { return count_; }
    bool isValid() const { return count_ > 0; }
    double* values() { return values_; }
    const double* values() const { return values_; }
    double operator[](int i) const { return values_[i]; }
    double& operator[](int i) { return values_[i]; }

    // Writes the joint values to consecutive doubles, such as a matrix column.
    void copyInto(double* destination) const { std::copy(values_, values_ + count_, destination); }

    // L1 distance over the joints both records have.
    static double distance(const JointVector& a, const JointVector& b)
    {
        return distance(a.values_, b.values_, std::min(a.count_, b.count_));
    }

    // L1 distance of the first `count` values of two configurations (none
    // when count < 1), summed in index order: the order fixes the rounding.
    static double distance(const double* a, const double* b, int count)
    {
        double sum = 0.0;
        for (int i = 0; i < count; ++i)
            sum += std::fabs(a[i] - b[i]);
        return sum;
    }

    QString toText(const QString& separator, int decimals) const
    {
        QStringList parts;
        for (int i = 0; i < count_; ++i)
            parts << QString::number(values_[i], 'f', decimals);
        return parts.join(separator);
    }

private:
    int32_t count_ = 0;
    double values_[MaxJoints] = {};
};
