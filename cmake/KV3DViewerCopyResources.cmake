# SPDX-License-Identifier: Apache-2.0
# Copies the contents of the folder FROM into the folder TO. Programs that lie in one folder share
# their resources, and a parallel build places them for several at once: they take turns by LOCK.
file(LOCK "${LOCK}" TIMEOUT 60)
file(COPY "${FROM}/" DESTINATION "${TO}")
file(LOCK "${LOCK}" RELEASE)
