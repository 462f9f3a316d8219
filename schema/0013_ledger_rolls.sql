-- Which roll of the weaving order (DOCUMENTO) a movement belongs to, 0 for none, and whether it takes another movement back
-- ("S", "N"). Null in what was written before: nobody knows any more.
ALTER TABLE {MAT_MOV} ADD ORDEM INTEGER, ADD ESTORNO VARCHAR(1);
ALTER TABLE {MAT_MOV} ADD CONSTRAINT {MAT_MOV}_CK_ESTORNO CHECK (ESTORNO IN ('S', 'N'));

-- The movements of a roll. It finds those of a document as well, so that the index on the document alone may go and a
-- movement costs no more than before.
CREATE INDEX {MAT_MOV}_PECA ON {MAT_MOV} (DOCUMENTO, ORDEM);
DROP INDEX {MAT_MOV}_DOCUMENTO;
