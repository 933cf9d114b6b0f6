#pragma once

/// What the objects of the simulated Outlook tell COM of themselves.
namespace standin {

/// Lets the objects go out, and lists the classes with the names of their interfaces, which differ
/// from the classes' names by an underscore in front where Outlook's do, and with their events. To
/// be called once, before the first object goes out.
void offerHostObjects();

}  // namespace standin
