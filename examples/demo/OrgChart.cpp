#include "OrgChart.h"

#include <array>

namespace {

const std::array<const char *, 40> FirstNames = {
    "Ada",    "Bruno", "Chiara", "Dmitri",  "Elena",  "Farid",  "Greta", "Hiro",  "Ines",   "Jonas",
    "Kavya",  "Lars",  "Maya",   "Nikolai", "Olga",   "Pedro",  "Quinn", "Rosa",  "Sven",   "Tamar",
    "Umar",   "Vera",  "Wanda",  "Xavier",  "Yara",   "Zoltan", "Amara", "Bjorn", "Camila", "Dario",
    "Esther", "Felix", "Gemma",  "Hugo",    "Ingrid", "Jamal",  "Keiko", "Luca",  "Mirela", "Noah",
};

const std::array<const char *, 40> LastNames = {
    "Okafor",   "Lindqvist", "Moreau",   "Tanaka", "Novak",   "Silva",     "Brennan",   "Haddad",
    "Kowalski", "Rossi",     "Andersen", "Mbeki",  "Duarte",  "Fischer",   "Ivanova",   "Nakamura",
    "O'Neill",  "Petrova",   "Quispe",   "Rahman", "Schmidt", "Takahashi", "Usman",     "Varga",
    "Weber",    "Yilmaz",    "Zhang",    "Abara",  "Byrne",   "Castillo",  "Dubois",    "Eriksen",
    "Ferreira", "Garcia",    "Horvath",  "Jensen", "Khan",    "Laine",     "Marchetti", "Nilsen",
};

const std::array<const char *, 6> Offices = {"Lisbon", "Toronto", "Osaka",
                                             "Leeds",  "Nairobi", "Remote"};

} // namespace

struct OrgChart::Division {
    const char *name;
    const char *office;
    std::array<const char *, 4> areas; // one director each; null ends the list
    std::array<const char *, 6> teams; // managers' teams
    std::array<const char *, 4> roles; // staff titles
};

OrgChart::OrgChart(quint32 seed) : m_state(seed) {}

int OrgChart::pick(int n) {
    m_state = m_state * 1664525u + 1013904223u;
    return static_cast<int>((m_state >> 8) % static_cast<quint32>(n));
}

QString OrgChart::personName() {
    const char *first = FirstNames[static_cast<size_t>(pick(static_cast<int>(FirstNames.size())))];
    const char *last = LastNames[static_cast<size_t>(pick(static_cast<int>(LastNames.size())))];
    return QStringLiteral("%1 %2").arg(QLatin1String(first), QLatin1String(last));
}

QString OrgChart::since(int earliestYear) {
    const int year = earliestYear + pick(2025 - earliestYear);
    return QStringLiteral("%1-%2").arg(year).arg(1 + pick(12), 2, 10, QLatin1Char('0'));
}

QString OrgChart::addPerson(DemoTable &table, const QString &parentKey, const QString &title,
                            const QString &department, const QString &location, bool lead) {
    ++m_employees;
    const QString extension = QString::number(2000 + m_employees * 7 % 7000);
    const QString key = QStringLiteral("emp-%1").arg(m_employees, 4, 10, QLatin1Char('0'));
    const int earliest = 2008 + (lead ? 0 : 4);
    return table.addRow(parentKey, key, lead ? QStringLiteral("team") : QStringLiteral("person"),
                        {personName(), title, location, since(earliest), extension, department});
}

void OrgChart::addDivision(DemoTable &table, const QString &ceoKey, const Division &division) {
    const QString name = QLatin1String(division.name);
    const QString vp = addPerson(table, ceoKey, QStringLiteral("Vice President, %1").arg(name),
                                 name, QLatin1String(division.office), true);
    int team = pick(6);
    for (const char *area : division.areas) {
        if (!area)
            break;
        const QString areaName = QLatin1String(area);
        const QString director = addPerson(table, vp, QStringLiteral("Director, %1").arg(areaName),
                                           name, QLatin1String(division.office), true);
        const int managers = 2 + pick(3);
        for (int m = 0; m < managers; ++m) {
            const QString teamName = QLatin1String(division.teams[static_cast<size_t>(team)]);
            team = (team + 1) % 6;
            const QString office = QLatin1String(Offices[static_cast<size_t>(pick(6))]);
            const QString manager =
                addPerson(table, director, QStringLiteral("Manager, %1").arg(teamName),
                          QStringLiteral("%1 / %2").arg(areaName, teamName), office, true);
            const int staff = 3 + pick(5);
            for (int s = 0; s < staff; ++s) {
                const QString role = QLatin1String(division.roles[static_cast<size_t>(pick(4))]);
                addPerson(table, manager, role, QStringLiteral("%1 / %2").arg(areaName, teamName),
                          pick(5) == 0 ? QStringLiteral("Remote") : office, false);
            }
        }
    }
}

DemoTable OrgChart::build() {
    static const std::array<Division, 5> divisions = {{
        {"Engineering",
         "Lisbon",
         {"Platform", "Applications", "Quality", "Infrastructure"},
         {"Core", "Tools", "Mobile", "Web", "Data", "Security"},
         {"Software Engineer", "Senior Software Engineer", "Test Engineer", "Technical Writer"}},
        {"Sales",
         "Toronto",
         {"EMEA", "Americas", "Asia Pacific", nullptr},
         {"Enterprise", "Mid-market", "Partners", "Public Sector", "Renewals", "Inside Sales"},
         {"Account Executive", "Sales Engineer", "Account Manager", "Sales Analyst"}},
        {"Operations",
         "Leeds",
         {"Logistics", "Facilities", "Procurement", "Customer Support"},
         {"North", "South", "Inbound", "Outbound", "Tier 1", "Tier 2"},
         {"Coordinator", "Specialist", "Analyst", "Support Agent"}},
        {"Finance",
         "Osaka",
         {"Accounting", "Treasury", "Planning", nullptr},
         {"Payables", "Receivables", "Payroll", "Tax", "Forecasting", "Audit"},
         {"Accountant", "Financial Analyst", "Controller", "Clerk"}},
        {"People",
         "Nairobi",
         {"Recruiting", "Learning", nullptr, nullptr},
         {"Campus", "Experienced Hires", "Onboarding", "Leadership", "Benefits", "Culture"},
         {"Recruiter", "HR Partner", "Trainer", "HR Analyst"}},
    }};

    DemoTable table;
    table.caption = QStringLiteral("Northwind Lattice Ltd. - organisation chart");
    using Editing = DemoTable::Editing;
    QStringList offices;
    for (const char *office : Offices)
        offices.append(QLatin1String(office));
    // The columns that edit come first, so that they are on the first screen.
    table.columns = {
        {QStringLiteral("Name"),
         QStringLiteral("reports to the row above"),
         lsAlignLeftJustify,
         230,
         320,
         Editing::Text,
         {}},
        {QStringLiteral("Title"), QString(), lsAlignLeftJustify, 150, 240, Editing::Text, {}},
        {QStringLiteral("Office"), QStringLiteral("pick from list"), lsAlignLeftJustify, 90, 110,
         Editing::Choice, offices},
        {QStringLiteral("Since"),
         QStringLiteral("year-month"),
         lsAlignCenter,
         80,
         110,
         Editing::Dialog,
         {}},
        {QStringLiteral("Ext."),
         QStringLiteral("phone"),
         lsAlignRightJustify,
         50,
         70,
         Editing::Text,
         {}},
        {QStringLiteral("Department"), QString(), lsAlignLeftJustify, 130, 240, Editing::None, {}},
    };
    m_employees = 0;
    const QString ceo =
        addPerson(table, QString(), QStringLiteral("Chief Executive Officer"),
                  QStringLiteral("Executive Office"), QStringLiteral("Lisbon"), true);
    for (const Division &division : divisions)
        addDivision(table, ceo, division);
    return table;
}
