#pragma once

/// Registers the status records and the requests with the meta-type system under their agreed names. Calling
/// it again does no harm.
void registerRecordTypes();
