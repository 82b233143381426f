#pragma once
// The built-in data set: the organisation chart of a fictional company, a few hundred people in
// five levels (chief executive, vice presidents, directors, managers, staff). It is generated
// from a fixed seed, so every run shows the same people.

#include "DemoTable.h"

class OrgChart {
public:
    explicit OrgChart(quint32 seed = 20240611u);

    DemoTable build();

private:
    struct Division;

    // A whole number in [0, n), from a linear congruential generator (the same on every
    // platform, unlike the standard distributions).
    int pick(int n);
    QString personName();
    QString since(int earliestYear);
    QString addPerson(DemoTable &table, const QString &parentKey, const QString &title,
                      const QString &department, const QString &location, bool lead);
    void addDivision(DemoTable &table, const QString &ceoKey, const Division &division);

    quint32 m_state;
    int m_employees = 0;
};
