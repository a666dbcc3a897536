#include "plugins/PlotixPlugIn/host/KTVHostServices.h"

#include "plugins/PlotixPlugIn/host/KTVHostDefaults.h"

#include <utility>

namespace {

template <class Member>
void completeMember(Member& member, const Member& standIn)
{
    if (!member)
        member = standIn;
}

KTVHostServices completed(KTVHostServices services)
{
    const KTVHostServices& defaults = defaultHostServices();
    completeMember(services.makeMessageViewController, defaults.makeMessageViewController);
    completeMember(services.helpManager, defaults.helpManager);
    completeMember(services.converter, defaults.converter);
    completeMember(services.dateCreator, defaults.dateCreator);
    completeMember(services.mainBundle, defaults.mainBundle);
    completeMember(services.userInterface, defaults.userInterface);
    completeMember(services.printInfo, defaults.printInfo);
    return services;
}

KTVHostServices& theServices()
{
    static KTVHostServices services = defaultHostServices();
    return services;
}

}  // namespace

KTVHostServices KTVHostServices::install(KTVHostServices services)
{
    return std::exchange(theServices(), completed(std::move(services)));
}

const KTVHostServices& KTVHostServices::installed()
{
    return theServices();
}
