-- A yarn gathers thousands of lots over the years, nearly all of them used up. A roll asks for those that still hold
-- something, and must not read the others.
CREATE INDEX {MAT_ITEN}_SALDO ON {MAT_ITEN} (CODIGO, COR, QTDE);
