#!/bin/sh
# Stands where the charger's uploader is expected, and fails: it must never look as if a charger
# had been written.
echo "No charger simulator is part of this demo yet: nothing was sent to a charger."
exit 1
