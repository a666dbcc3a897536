#pragma once

#include "hostapp/formulas/FormulaPlan.h"

#include <gtest/gtest.h>

/// A site with a boiler and a roof station, whose formulas tests plan.
namespace plotix {

class FormulaSite : public testing::Test {
protected:
    FormulaSite()
    {
        directory.agents = {{kBoiler, "Boiler", {}}, {kRoof, "Roof station", {}}};
        add(kBoiler, "Supply", "°C");
        add(kBoiler, "Return", "°C");
        add(kBoiler, "Power", "kW");
        add(kBoiler, "Outdoor", "°F");
        add(kBoiler, "Room-air (2)", "°C");
        add(kBoiler, "Level", "");
        add(kBoiler, "Count", "pieces");
        add(kBoiler, "Valve", "%");
        add(kBoiler, "Flow", "m³/h");
        add(kBoiler, "Spread", "K");
        add(kRoof, "Air temperature", "°C");
        add(kRoof, "Humidity", "%");
    }

    qint64 add(qint64 agent, const char* name, const char* unit, const char* formula = nullptr)
    {
        SiteProperty::Description property;
        property.id = ++m_last;
        property.name = QString::fromUtf8(name);
        property.propertyName = property.name.toLower();
        property.unit = property.archivedUnit = QString::fromUtf8(unit);
        if (formula)
            property.formula = PropertyFormula{QString::fromUtf8(formula)};
        for (FormulaDirectory::Agent& each : directory.agents)
            if (each.id == agent)
                each.properties.push_back(property);
        return property.id;
    }
    qint64 idOf(const char* name) const
    {
        for (const FormulaDirectory::Agent& agent : directory.agents)
            for (const auto& property : agent.properties)
                if (property.name == QString::fromUtf8(name))
                    return property.id;
        return 0;
    }

    FormulaPlan plan(const char* text, const char* unit = "") const
    {
        return planFormula(directory, kBoiler, {QString::fromUtf8(text), QString::fromUtf8(unit)});
    }
    /// Of the result; a sentence where there is none.
    std::string unitOf(const char* text, const char* unit = "") const
    {
        const FormulaPlan made = plan(text, unit);
        return made.program ? made.program->unit.toStdString() : sentenceOf(*made.problem).toStdString();
    }
    FormulaProblem problemOf(const char* text, const char* unit = "") const
    {
        return plan(text, unit).problem.value_or(FormulaProblem{FormulaProblem::Kind::Empty, -1});
    }
    std::string sentence(const char* text, const char* unit = "") const
    {
        return sentenceOf(problemOf(text, unit)).toStdString();
    }
    /// The part of the text that the problem is about.
    std::string placeOf(const char* text) const
    {
        const FormulaProblem problem = problemOf(text);
        return QString::fromUtf8(text).mid(problem.position, problem.length).toStdString();
    }

    static constexpr qint64 kBoiler = 1, kRoof = 2;
    FormulaDirectory directory;

private:
    qint64 m_last = 0;
};

}  // namespace plotix
