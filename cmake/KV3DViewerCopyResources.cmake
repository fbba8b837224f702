# SPDX-License-Identifier: Apache-2.0
# Copies the contents of the folder FROM into the folder TO, which the script PLACES sets. Programs in the same folder
# share their resources, and a parallel build may copy them for several programs at the same time, so the file LOCK is
# locked meanwhile.
include("${PLACES}")
file(LOCK "${LOCK}" TIMEOUT 60)
file(COPY "${FROM}/" DESTINATION "${TO}")
file(LOCK "${LOCK}" RELEASE)
