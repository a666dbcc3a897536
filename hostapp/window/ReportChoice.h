#pragma once

/// In which form the user wants reports: the host's page, or what the view itself writes. Kept in the user's settings.
/// Free functions; main thread only.
namespace plotix {

bool wantsClassicReport();
void rememberClassicReport(bool wanted);

}  // namespace plotix
