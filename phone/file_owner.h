// Under whom the program works.
#pragma once

namespace phone {

// If the program runs as root, makes it run from now on as the user whose files the home screen
// reads and writes: the owner of /var/mobile. So all files that it makes belong to that user.
// Throws Failure if it cannot.
void workAsOwner();

}  // namespace phone
