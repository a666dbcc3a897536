#pragma once

#include "hostapp/live/sources/computer/MachineSource.h"

#include <string>

/// A machine whose load is how often it was asked, with one sensor that can be pulled out.
class MadeUpMachine : public plotix::MachineSource {
public:
    plotix::MachineTexts look() override
    {
        plotix::MachineTexts texts;
        texts.seconds = ++looks;
        texts.load = std::to_string(looks) + " 0.5 0.25 1/1 1\n";
        texts.memory = "MemTotal: 1000 kB\nMemAvailable: 250 kB\n";
        if (sensorIsThere)
            texts.sensors.push_back({QStringLiteral("Temperature Core"), "40000\n"});
        return texts;
    }

    int looks = 0;
    bool sensorIsThere = true;
};
