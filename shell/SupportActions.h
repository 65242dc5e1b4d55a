#pragma once

namespace tarv {

struct Runtime;

/// Menu entry `mnuSupportDienst` ("Computerdienste verwalten"): opens the services console of this computer,
/// always the system folder's own. Where that needs elevation, Windows asks for it. Any failure is silent.
void openServicesConsole(Runtime& rt);

/// Menu entry `mnuSupportView` ("Fernwartung"): starts the remote-maintenance client "FastClient.exe" of the
/// program's own folder, and no other. Any failure is silent.
void startRemoteMaintenance(Runtime& rt);

} // namespace tarv
