#include "plugins/PlotixPlugIn/host/KTVProperty.h"

KTVPropertyObserver::KTVPropertyObserver() : m_lifetime(std::make_shared<char>()) {}

KTVPropertyObserver::~KTVPropertyObserver() = default;

KTVProperty::~KTVProperty() = default;
